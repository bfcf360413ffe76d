import os
from collections.abc import Sequence
from typing import Any, Literal, Optional, Union

import numpy as np
import numpy.typing as npt

from .records import ClosestApproach as ClosestApproach
from .records import Error as Error
from .records import Finding as Finding
from .records import Measure as Measure

__version__: str

_Path = Union[str, bytes, os.PathLike[str], os.PathLike[bytes]]
_Unit = Optional[Literal["m", "ft"]]
_Doubles = npt.NDArray[np.float64]

class Flares:
    def __len__(self) -> int: ...
    @property
    def sample(self) -> npt.NDArray[np.int64]: ...
    @property
    def time(self) -> _Doubles: ...
    @property
    def id(self) -> npt.NDArray[np.int32]: ...
    @property
    def position(self) -> _Doubles: ...
    @property
    def brightness(self) -> _Doubles: ...
    @property
    def bands(self) -> _Doubles: ...

class Engagement:
    def __len__(self) -> int: ...
    @property
    def path(self) -> str: ...
    @property
    def unit(self) -> _Unit: ...
    @property
    def header(self) -> dict[str, Any]: ...
    @property
    def time(self) -> _Doubles: ...
    @property
    def target_position(self) -> _Doubles: ...
    @property
    def target_attitude(self) -> _Doubles: ...
    @property
    def threat_position(self) -> _Doubles: ...
    @property
    def threat_attitude(self) -> _Doubles: ...
    @property
    def gyro(self) -> _Doubles: ...
    @property
    def flares(self) -> Flares: ...
    @property
    def flare_ids(self) -> npt.NDArray[np.int32]: ...
    @property
    def closest_approach(self) -> Optional[ClosestApproach]: ...
    def measure(self, name: str, times: Optional[npt.ArrayLike] = None) -> Union[float, _Doubles]: ...
    def object_name(self, number: float) -> Optional[str]: ...

def load(
    path: _Path,
    *,
    unit: _Unit = None,
    strict: bool = True,
    signature_step: float = 0.1,
    background: Optional[float] = None,
    flare_scale: float = 1.0,
    rotors: Optional[_Path] = None,
) -> Engagement: ...
def measures(unit: _Unit = None) -> list[Measure]: ...
def check(path: _Path, *, all: bool = False) -> list[Finding]: ...
def render(
    path: Union[_Path, Sequence[_Path]],
    at: npt.ArrayLike = 0.0,
    view: Optional[Literal["threat", "target", "gyro", "free", "overview"]] = None,
    size: tuple[int, int] = (640, 480),
    *,
    eye: Optional[Sequence[float]] = None,
    look_at: Optional[Sequence[float]] = None,
    follow: Optional[int] = None,
    terrain: bool = False,
    grid: bool = True,
    history: bool = True,
    drop_lines: bool = True,
    line_styles: bool = False,
    antialias: Literal[0, 2, 4, 8] = 0,
    scale: Union[float, Literal["fixed", "auto"]] = "fixed",
    palette: Literal["grey", "inverted", "viridis", "inferno"] = "grey",
    colour_bar: bool = False,
    flare_scale: float = 1.0,
    title: str = "",
    labels: bool = False,
    readout: bool = False,
    unit: _Unit = None,
) -> npt.NDArray[np.uint8]: ...
def sandford_robertson(
    normal: npt.ArrayLike,
    to_source: npt.ArrayLike,
    to_viewer: npt.ArrayLike,
    *,
    rho_d: npt.ArrayLike,
    epsilon: npt.ArrayLike,
    b: npt.ArrayLike = 0.0,
    e: npt.ArrayLike = 1.0,
    mode: int = 1,
    G: Optional[npt.ArrayLike] = None,
    glint: Optional[npt.ArrayLike] = None,
) -> npt.NDArray[np.float32]: ...
