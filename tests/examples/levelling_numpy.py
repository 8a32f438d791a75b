"""The levelling network of examples/levelling.ws by NumPy, from the lines instead of the written-out matrix.

usage: levelling_numpy.py     (writes levelling.json beside itself; NumPy 1.24, numpy.linalg.pinv, numpy.linalg.solve)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

# from benchmark, to benchmark, difference in metres
lines = [(0, 1, 1.2346), (1, 2, 0.8122), (2, 3, -2.1057), (3, 4, 0.4410), (4, 0, -0.3838), (0, 2, 2.0451), (1, 3, -1.2919)]
A = np.zeros((7, 5))
for k, (start, end, _) in enumerate(lines):
    A[k, start], A[k, end] = -1, 1
d = np.array([line[2] for line in lines])
# the normal equations with the condition that the heights add up to zero
h = np.linalg.solve(np.block([[A.T @ A, np.ones((5, 1))], [np.ones((1, 5)), np.zeros((1, 1))]]), np.append(A.T @ d, 0))[:5]
correction = A @ h - d

os.chdir(pathlib.Path(__file__).resolve().parent)
column = (-1, 1)
write("levelling.json", [
    entry(4.0, ""), entry(np.linalg.pinv(A), ""), entry(h.reshape(column), "m"), entry(0.0, ""),
    entry(correction.reshape(column), "m"), entry(np.sqrt(correction @ correction / 3), "m"), entry(d[:5].sum(), "m"),
    entry((h - h[0] + 112.5).reshape(column), "m")])
