"""Missile-engagement trajectories: samples and flares as arrays, what is measured of them, pictures of them."""

from ._core import Engagement, Flares, __version__, check, load, measures
from .records import ClosestApproach, Error, Finding, Measure
from .reflectance import sandford_robertson
from .rendering import render

__all__ = [
    "ClosestApproach", "Engagement", "Error", "Finding", "Flares", "Measure", "__version__", "check", "load",
    "measures", "render", "sandford_robertson",
]
for _public in (ClosestApproach, Error, Finding, Measure, check, load, measures, render, sandford_robertson):
    _public.__module__ = __name__
del _public
