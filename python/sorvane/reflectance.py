"""The reflectance model of bodies, over arrays."""

import numpy as np

from . import _core


def sandford_robertson(normal, to_source, to_viewer, *, rho_d, epsilon, b=0.0, e=1.0, mode=1, G=None, glint=None):
    """The reflectance of a surface after Sandford and Robertson, in 1/sr.

    normal, to_source and to_viewer are directions (..., 3) of unit length: the surface's, to the source of the light
    and to who sees it. rho_d (diffuse reflectance), epsilon (emissivity), b (directional parameter, not negative) and e
    (width of the specular lobe) are numbers or arrays (...), as a reflectance file has them; all are broadcast against
    each other. mode 2 gives the diffuse term alone, 3 the directional-hemispherical specular reflectance (without
    unit), any other both terms.

    G is the normalisation that belongs to b, glint the unit bisector of the two directions; both are worked out unless
    given. Returns float32 (...): the very numbers that the viewer draws by, which is single precision; 0 for a source or
    a viewer at the horizon or below it.
    """
    directions = [np.asarray(vector, dtype=np.float32) for vector in (normal, to_source, to_viewer)]
    if glint is None:
        bisector = np.asarray(to_source, dtype=float) + np.asarray(to_viewer, dtype=float)
        length = np.linalg.norm(bisector, axis=-1, keepdims=True)
        glint = np.divide(bisector, length, out=np.zeros_like(bisector), where=length > 0)
    directions.append(np.asarray(glint, dtype=np.float32))
    if any(vector.ndim == 0 or vector.shape[-1] != 3 for vector in directions):
        raise ValueError("a direction has three components")
    b = np.asarray(b, dtype=np.float32)
    if (b < 0).any():
        raise ValueError("b is not negative")
    if G is None:
        G = _core.normalisations(b.ravel()).reshape(b.shape)
    parameters = [np.asarray(parameter, dtype=np.float32) for parameter in (b, e, rho_d, epsilon, G)]
    shape = np.broadcast_shapes(*(vector.shape[:-1] for vector in directions), *(p.shape for p in parameters))
    flat = np.stack([np.broadcast_to(parameter, shape).ravel() for parameter in parameters])
    vectors = np.stack([np.broadcast_to(vector, (*shape, 3)).reshape(-1, 3) for vector in directions])
    values = _core.reflectances(mode, vectors, flat).reshape(shape)
    return values if shape else values[()]
