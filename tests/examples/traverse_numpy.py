"""The traverse of examples/traverse.ws by NumPy: angles in seconds of arc, cumulative sums, the shoelace formula.

usage: traverse_numpy.py     (writes traverse.json beside itself; NumPy 1.24)
"""
import csv
import os
import pathlib

import numpy as np

from recorded import entry, table, write

here = pathlib.Path(__file__).resolve().parent
with open(here.parent.parent / "examples" / "traverse.csv", encoding="utf-8") as file:
    rows = list(csv.reader(file))[1:]
names = [row[0] for row in rows]
degrees, minutes, seconds, distances = np.array([[float(cell) for cell in row[1:]] for row in rows]).T
n = len(rows)


def dms(arc):
    return [arc // 3600, arc % 3600 // 60, arc % 60]


angles = degrees * 3600 + minutes * 60 + seconds
misclosure = angles.sum() - (n - 2) * 648000
inside = angles - misclosure / n
azimuths = 71 * 3600 + 5 * 60 + 48 + np.concatenate([[0], np.cumsum(648000 - inside[1:])])
turned = np.radians(azimuths / 3600)
legs = distances[:, None] * np.column_stack([np.sin(turned), np.cos(turned)])
gap = legs.sum(axis=0)
adjusted = legs - np.outer(distances / distances.sum(), gap)
stations = np.array([5000, 2000]) + np.vstack([[0, 0], np.cumsum(adjusted, axis=0)[:-1]])
x, y = stations.T
area = 0.5 * (np.dot(y, np.roll(x, -1)) - np.dot(x, np.roll(y, -1)))  # clockwise is positive

os.chdir(here)
write("traverse.json", [
    table([dms(misclosure)]), table([dms(a % 1296000) for a in azimuths]), entry(gap[None, :], "m"),
    entry(distances.sum() / np.hypot(*gap), ""),
    table([[name, *p] for name, p in zip(names, stations.tolist())], "m"), table([[names[int(np.argmax(y))]]]),
    entry(area, "m^2")])
