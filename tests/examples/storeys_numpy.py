"""The building of examples/storeys.ws by NumPy: modes from the symmetric problem M^-1/2 K M^-1/2, damped ones from
numpy.linalg.eig of the state matrix.

usage: storeys_numpy.py     (writes storeys.json beside itself; NumPy 1.24, numpy.linalg.eigh and eig)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

n = 5
height = np.array([4.5, 3.4, 3.4, 3.4, 3.4])
mass = np.array([84e3, 84e3, 84e3, 84e3, 61e3])
I = np.array([11259e-8, 11259e-8, 8091e-8, 8091e-8, 8091e-8])
k = 12 * 12 * 210e9 * I / height**3
K = np.diag(k) + np.diag(np.append(k[1:], 0)) - np.diag(k[1:], 1) - np.diag(k[1:], -1)
root = np.sqrt(mass)
squares, V = np.linalg.eigh(K / np.outer(root, root))
shapes = V / root[:, None]
shapes = shapes / shapes[-1]
shares = (shapes.T @ mass)**2 / (shapes**2).T.dot(mass) / mass.sum()

D = K / mass[:, None]
C = np.zeros((n, n))
C[0, 0] = 900e3 / mass[0]
values, vectors = np.linalg.eig(np.block([[np.zeros((n, n)), np.eye(n)], [-D, -C]]))
upper = [i for i in np.argsort(values.imag) if values[i].imag > 0]
damped = values[upper]
first = vectors[:n, upper[0]]


def column(x):
    return np.asarray(x).reshape(-1, 1)


os.chdir(pathlib.Path(__file__).resolve().parent)
write("storeys.json", [
    entry(column(k), "kg*s^-2"), entry(column(np.sqrt(squares) / (2 * np.pi)), "s^-1"), entry(shapes[:, :2], ""),
    entry(squares[0], "s^-2"), entry(column(shares), ""), entry(shares[0] * mass.sum() * 2.1, "kg*m*s^-2"),
    entry(column(damped.imag / (2 * np.pi)), "s^-1"), entry(column(-damped.real / abs(damped)), ""),
    entry(column(np.angle(first / first[-1])), "")])
