"""The frame of examples/frame.ws by NumPy and SciPy: the whole stiffness from element matrices, sways and rotations
together, rotations condensed by a linear solution; modes from the symmetric problem of scipy.linalg.eigh.

usage: frame_numpy.py     (writes frame.json beside itself; NumPy 1.24, SciPy 1.10)
"""
import os
import pathlib

import numpy as np
import scipy.linalg

from recorded import entry, write

n = 4
E = 210e9
height = [4.2, 3.5, 3.5, 3.5]
I = [14920e-8, 14920e-8, 8091e-8, 8091e-8]
mass = np.array([34e3, 34e3, 34e3, 26e3])


def column(x):
    return np.asarray(x).reshape(-1, 1)


# Sway and rotation of floor f stand at 2 f and 2 f + 1; the ground at the end falls away.
whole = np.zeros((2 * n + 2, 2 * n + 2))
for f, (h, i) in enumerate(zip(height, I)):
    below = [2 * n, 2 * n + 1] if f == 0 else [2 * f - 2, 2 * f - 1]
    at = np.ix_(below + [2 * f, 2 * f + 1], below + [2 * f, 2 * f + 1])
    whole[at] += 2 * E * i / h**3 * np.array([[12, 6 * h, -12, 6 * h], [6 * h, 4 * h**2, -6 * h, 2 * h**2],
                                              [-12, -6 * h, 12, -6 * h], [6 * h, 2 * h**2, -6 * h, 4 * h**2]])
    beam = 7.2**-1 * E * 16270e-8 * np.array([[4, 2], [2, 4]])
    whole[2 * f + 1, 2 * f + 1] += beam.sum()  # both ends turn alike
u, r = np.arange(0, 2 * n, 2), np.arange(1, 2 * n, 2)
follow = -np.linalg.solve(whole[np.ix_(r, r)], whole[np.ix_(r, u)])
K = whole[np.ix_(u, u)] + whole[np.ix_(u, r)] @ follow
M = np.diag(mass)
squares, V = scipy.linalg.eigh((K + K.T) / 2, M)
shapes = V / V[-1]
stiff = scipy.linalg.eigh(whole[np.ix_(u, u)], M, eigvals_only=True)

os.chdir(pathlib.Path(__file__).resolve().parent)
write("frame.json", [
    entry(K, "kg*s^-2"), entry(column(squares[::-1].astype(complex)), ""),
    entry(column(np.sqrt(squares) / (2 * np.pi)), "s^-1"), entry(shapes, ""), entry(np.ones((n, 1)), ""),
    entry(np.diag(mass @ shapes**2), "kg"), entry(follow @ shapes[:, :1] * 0.01, ""),
    entry(column(np.sqrt(stiff / squares) - 1), "")])
