"""The stresses of examples/stress.ws by NumPy: principal stresses by Cardano's formula, directions as cross products of
rows of S - s I, the sheet by the formulas of Mohr's circle.

usage: stress_numpy.py     (writes stress.json beside itself; NumPy 1.24)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write


def column(x):
    return np.asarray(x).reshape(-1, 1)


S = np.array([[118, 46, -21], [46, -34, 12], [-21, 12, 27]]) * 1e6
mean = np.trace(S) / 3
D = S - mean * np.eye(3)
J2, J3 = (D * D).sum() / 2, np.linalg.det(D)
lode = np.arccos(J3 / 2 * (3 / J2)**1.5) / 3
s = mean + 2 * np.sqrt(J2 / 3) * np.cos(lode - np.array([0, 2, 4]) * np.pi / 3)
s = np.sort(s)[::-1]
directions = np.empty((3, 3))
for k in range(3):
    rows = S - s[k] * np.eye(3)
    v = max((np.cross(rows[i], rows[j]) for i, j in ((0, 1), (0, 2), (1, 2))), key=np.linalg.norm)
    directions[:, k] = v / np.linalg.norm(v) * np.sign(v[0])
equivalent = np.sqrt(3 * J2)

a, b, c = 612e-6, 345e-6, -188e-6
E, nu = 210e9, 0.3
radius = np.hypot((a - c) / 2, b - (a + c) / 2)
strains = np.array([(a + c) / 2 + radius, (a + c) / 2 - radius])
stresses = E / (1 - nu**2) * (strains + nu * strains[::-1])

os.chdir(pathlib.Path(__file__).resolve().parent)
unit = "kg*m^-1*s^-2"
write("stress.json", [
    entry(column(s), unit), entry(directions, ""), entry(column(np.arccos(directions[0])), ""),
    entry(np.diag(s), unit), entry(np.ones((1, 2)), ""), entry((s[0] - s[2]) / 2, unit), entry(equivalent, unit),
    entry(355e6 / equivalent, ""), entry(1.0, ""), entry(column(strains), ""), entry(column(stresses), unit),
    entry(np.arctan2(2 * b - a - c, a - c) / 2, "")])
