"""The reflectance model: broadcasting, and the formulas written down a second time."""

import math

import numpy as np
import pytest

import sorvane

UP = (0.0, 0.0, 1.0)
PAINT = {"rho_d": 0.2, "epsilon": 0.6, "b": 0.3, "e": 0.25}


def direction(degrees):
    return np.stack([np.sin(np.radians(degrees)), 0 * np.asarray(degrees), np.cos(np.radians(degrees))], axis=-1)


def plain(source, viewer, rho_d, epsilon, b, e):
    """Below 80 degrees, in the plane of the normal; directions in degrees from it."""
    cos_source, cos_viewer, cos_glint = (math.cos(math.radians(a)) for a in (source, viewer, (source + viewer) / 2))

    def directional(cosine):
        return 1 / (1 + b**2 * (1 - cosine**2) / cosine**2)
    g = (1 + 2 * b**2 * math.log(b) / (1 - b**2)) / (1 - b**2)
    q = directional(cos_source) / g
    albedo = 1 - (epsilon + rho_d) * q
    m = (1 - e**2)**2 * cos_source**2 + 2 * e**2
    big_h = ((1 - e**2) * cos_source + m / math.sqrt(m + 2 * e**2)) / (2 * e**2)
    lobe = 1 / (1 - (1 - e**2) * cos_glint**2)**2
    return rho_d * q * directional(cos_viewer) / (g * math.pi) + albedo / (4 * math.pi) * lobe / (big_h * cos_viewer)


def test_the_formulas_over_a_grid():
    sources, viewers = np.array([0.0, 20, 50, 75]), np.array([-70.0, -20, 0, 10, 60])
    values = sorvane.sandford_robertson(UP, direction(sources)[:, None], direction(viewers), **PAINT)
    assert values.shape == (4, 5) and values.dtype == np.float32
    np.testing.assert_allclose(values, [[plain(s, v, **PAINT) for v in viewers] for s in sources], rtol=2e-5)


def test_parameters_are_broadcast():
    rho_d = np.array([[0.0], [0.1], [0.3]])
    values = sorvane.sandford_robertson(UP, direction(30), direction([10, 40]), **{**PAINT, "rho_d": rho_d})
    assert values.shape == (3, 2)
    for i, value in enumerate(values):
        alone = sorvane.sandford_robertson(UP, direction(30), direction(40), **{**PAINT, "rho_d": rho_d[i, 0]})
        assert alone == value[1] and alone.shape == ()
    assert sorvane.sandford_robertson(UP, np.zeros((0, 3)), UP, **PAINT).shape == (0,)


def test_modes_horizon_and_given_terms():
    both, diffuse, albedo = (sorvane.sandford_robertson(UP, direction(20), UP, mode=mode, **PAINT) for mode in (1, 2, 3))
    assert both == pytest.approx(plain(20, 0, **PAINT), rel=2e-5) and 0 < diffuse < both and 0 < albedo < 1
    assert sorvane.sandford_robertson(UP, direction([90, 120]), UP, **PAINT).tolist() == [0, 0]
    assert sorvane.sandford_robertson(UP, UP, direction(180), **PAINT) == 0
    assert sorvane.sandford_robertson(UP, direction(20), UP, mode=2, G=0.5, **PAINT) > diffuse
    assert sorvane.sandford_robertson(UP, direction(20), UP, glint=UP, **PAINT) > both
    assert sorvane.sandford_robertson(UP, UP, UP, rho_d=0.3, epsilon=0.7, mode=2) == pytest.approx(0.3 / math.pi)
    for wrong in ({"normal": (0, 1)}, {"normal": 1.0}, {"b": -0.1}):
        with pytest.raises(ValueError):
            sorvane.sandford_robertson(**{"normal": UP, "to_source": UP, "to_viewer": UP, **PAINT, **wrong})
