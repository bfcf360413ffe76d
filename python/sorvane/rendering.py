"""Pictures of engagements as arrays."""

import os
import warnings

import numpy as np

from . import _core


def render(path, at=0.0, view=None, size=(640, 480), *, eye=None, look_at=None, follow=None, terrain=False, grid=True,
           history=True, drop_lines=True, line_styles=False, antialias=0, scale="fixed", palette="grey",
           colour_bar=False, flare_scale=1.0, title="", labels=False, readout=False, unit=None):
    """Draws engagements as sorvane render does, without a window or a display.

    path is a trajectory file or a sequence of them, all drawn into one scene; at is the time in seconds. Returns an
    array (h, w, 3) of uint8, red, green and blue, rows from the top; (k, h, w, 3) for k times at once, which loads the
    files once. size is width and height in pixels.

    view is what the camera follows: "threat" (unless eye or look_at is given), "target", "gyro", "free" or "overview".
    eye and look_at are points x, y, z of the free view, z down; follow is which of the paths the camera follows, from
    1. terrain, grid, history, drop_lines, line_styles and antialias (0, 2, 4, 8 samples a pixel) are as the command has
    them. scale ("fixed", "auto" or the radiance of white in W/cm²/sr), palette ("grey", "inverted", "viridis",
    "inferno") and colour_bar say what the colours mean, flare_scale how many W/sr a flare of brightness 1 has. title,
    labels and readout put texts into the picture, unit ("m", "ft") names the read-out's lengths, and says how large the
    trajectory's unit is for the radiance of flares.

    What the picture lacks, such as bodies whose files are missing, is told by warnings. Raises Error when nothing can
    be drawn, ValueError for arguments that don't fit together, RuntimeError on another thread than the first that
    has drawn.
    """
    paths = [path] if isinstance(path, (str, bytes, os.PathLike)) else list(path)
    times = np.asarray(at, dtype=float)
    if times.ndim > 1 or not np.isfinite(times).all():
        raise ValueError("at is a finite time, or a row of such")
    if antialias not in (0, 2, 4, 8):
        raise ValueError("antialias is 0, 2, 4 or 8")
    width, height = size
    options = {
        "view": view, "eye": eye, "look_at": look_at, "follow": follow, "terrain": terrain, "grid": grid,
        "history": history, "drop_lines": drop_lines, "line_styles": line_styles, "antialias": antialias,
        "scale": str(scale), "palette": palette, "colour_bar": colour_bar, "flare_scale": flare_scale, "title": title, "labels": labels,
        "readout": readout, "unit": unit,
    }
    pictures, remarks = _core.render(paths, np.atleast_1d(times).tolist(), (width, height), options)
    for remark in remarks:
        warnings.warn(remark, stacklevel=2)
    return pictures if times.ndim else pictures[0]
