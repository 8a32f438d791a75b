"""The suspension of examples/suspension.ws by NumPy, from its two equations of the second order.

usage: suspension_numpy.py     (writes suspension.json beside itself; NumPy 1.24, numpy.linalg.solve and det)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

M = np.diag([300.0, 40.0])
D = 1200.0 * np.array([[1, -1], [-1, 1]])
K = 16e3 * np.array([[1, -1], [-1, 1]]) + np.diag([0, 180e3])


def dynamic(p):
    return p * p * M + p * D + K


def heights(p):
    return np.linalg.solve(dynamic(p), np.array([0, 180e3]))


def frequency(f):
    return 2j * np.pi * f


p = frequency(1.5)
body, wheel = heights(p)
states = np.array([[body], [p * body], [wheel], [p * wheel]])
two = np.array([[heights(frequency(1.5))[0]], [heights(frequency(10))[0]]])
characteristic = np.linalg.det(dynamic(-2 + 6j)) / np.linalg.det(M)

# The moments of the response to a blow on the road: derivatives of the heights, step by step.
x, v = np.zeros(2), np.array([0, 180e3 / 40])
columns = [[0, 0, 0, 180e3 / 40]]
for _ in range(3):
    x, v = v, np.linalg.solve(M, -D @ v - K @ x)
    columns.append([x[0], v[0], x[1], v[1]])
reached = np.linalg.det(np.array(columns).T)

os.chdir(pathlib.Path(__file__).resolve().parent)
write("suspension.json", [entry(states, [[""], ["s^-1"], [""], ["s^-1"]]), entry(two, ""), entry(heights(0j)[0], ""),
                          entry(characteristic, "s^-4"), entry(reached, "s^-12")])
