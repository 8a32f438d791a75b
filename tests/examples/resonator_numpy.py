"""The resonator of examples/resonator.ws by closed forms: the usual g-parameters of two mirrors for stability and radii,
Sylvester's formula for powers. No matrix is raised to a power or inverted.

usage: resonator_numpy.py     (writes resonator.json beside itself; NumPy 1.24 for functions and a 2-by-2 product)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

gap, R1, R2 = 0.3, 0.4, 0.5


def trip_from(near, far):
    """Free space, the far mirror, free space, the near mirror, multiplied out."""
    g = 1 - 2 * gap / far
    A, B = g, gap + gap * g
    return np.array([[A, B], [-2 / far - 2 / near * A, 1 - 2 * gap / far - 2 / near * B]])


trip = trip_from(R1, R2)
angle = np.arccos(np.trace(trip) / 2)


def after(n):
    power = (np.sin(n * angle) * trip - np.sin((n - 1) * angle) * np.eye(2)) / np.sin(angle)
    return entry(power @ np.array([[1e-3], [np.radians(0.5)]]), [["m"], [""]])


# g1 * g2, with g = 1 - distance / radius
distance = np.arange(1, 11) * 0.1
trial = np.column_stack([distance, (1 - distance / R1) * (1 - distance / R2)])
g1, g2 = 1 - gap / R1, 1 - gap / R2


def radius(g_here, g_there):
    """Of the bundle at a mirror."""
    return np.sqrt(1064e-9 * gap / np.pi * np.sqrt(g_there / (g_here * (1 - g_here * g_there))))


units = [["", "m"], ["m^-1", ""]]
os.chdir(pathlib.Path(__file__).resolve().parent)
write("resonator.json", [
    entry(trip, units), entry(1.0, ""), after(1), after(1000), after(-1000), entry(trial, [["m", ""]] * len(trial)),
    entry(radius(g1, g2), "m"), entry(trip_from(R2, R1), units), entry(g1 * g2, ""), entry(radius(g2, g1), "m")])
