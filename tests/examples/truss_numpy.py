"""The truss of examples/truss.ws by NumPy: the usual element-by-element assembly, supported rows and columns deleted.

usage: truss_numpy.py     (writes truss.json beside itself; NumPy 1.24, numpy.linalg.solve)
"""
import csv
import os
import pathlib

import numpy as np

from recorded import entry, write

here = pathlib.Path(__file__).resolve().parent
examples = here.parent.parent / "examples"


def table(name):
    with open(examples / name, encoding="utf-8") as file:
        return np.array([[float(cell) for cell in row] for row in list(csv.reader(file))[1:]])


nodes = table("nodes.csv")
bars = table("bars.csv")
E = 210e9
K = np.zeros((2 * len(nodes), 2 * len(nodes)))
elements = []
for start, end, area in bars:
    i, j = int(start), int(end)
    extent = nodes[j, :2] - nodes[i, :2]
    length = np.hypot(*extent)
    c = extent / length
    g = np.concatenate([-c, c])
    where = [2 * i, 2 * i + 1, 2 * j, 2 * j + 1]
    k = E * area * 1e-4 / length
    K[np.ix_(where, where)] += k * np.outer(g, g)
    elements.append((where, k * g))

free = np.flatnonzero(nodes[:, 2:4].ravel() == 0)
F = np.where(nodes[:, 2:4].ravel() == 0, nodes[:, 4:6].ravel() * 1e3, 0.0)
u = np.zeros(len(F))
u[free] = np.linalg.solve(K[np.ix_(free, free)], F[free])
force = np.array([[g @ u[where]] for where, g in elements])
reaction = K @ u - F
moved = u.reshape(-1, 2)

os.chdir(here)
newton = "kg*m*s^-2"
write("truss.json", [entry(moved[:13], "m"), entry(moved[13:], "m"), entry(force[:12], newton), entry(force[12:22], newton),
                     entry(force[22:33], newton), entry(force[33:], newton), entry(reaction[[0, 1, 25]].reshape(-1, 1), newton)])
