"""The network of examples/network.ws by NumPy, from the branches instead of the written-out matrix.

usage: network_numpy.py     (writes network.json beside itself; NumPy 1.24, numpy.linalg.solve)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

w = 2 * np.pi * 50


def coil(R, L):
    return 1 / (R + 1j * w * L)


source = coil(0.2, 2e-3)
# from node, to node (None is earth), admittance
branches = [(0, None, source), (0, 1, coil(0.4, 1.2e-3)), (1, 2, coil(0.6, 1.8e-3)), (0, 2, coil(0.5, 1.5e-3)),
            (1, None, coil(9, 24e-3)), (1, None, 1j * w * 80e-6), (2, None, 1 / 22)]
Y = np.zeros((3, 3), complex)
for start, end, y in branches:
    Y[start, start] += y
    if end is not None:
        Y[end, end] += y
        Y[start, end] -= y
        Y[end, start] -= y
V = np.linalg.solve(Y, np.array([source * 230, 0, 0])).reshape(-1, 1)
drawn = source * (230 - V[0, 0])
S = 230 * np.conj(drawn)

os.chdir(pathlib.Path(__file__).resolve().parent)
volt = "kg*m^2*s^-3*A^-1"
write("network.json", [entry(V, volt), entry(np.abs(V), volt), entry(np.angle(V), ""), entry(drawn, "A"),
                       entry(np.array([[S.real], [S.imag]]), "kg*m^2*s^-3")])
