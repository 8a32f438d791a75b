"""The beam of examples/beam.ws by the force method: a stepped cantilever whose tip stands free, with the forces of the
supports as unknowns, and deflections as integrals of moments. There is no stiffness matrix.

usage: beam_numpy.py     (writes beam.json beside itself; NumPy 1.24, numpy.linalg.solve and Gauss points)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

E = 210e9
nodes = [0.0, 5.0, 7.5, 10.0, 11.5]
EI = [E * 3892e-8] * 3 + [E * 1943e-8]
b, c, d, e = nodes[1:]
q, hoist, sign = 6e3, 18e3, 2.5e3

# Points and weights of the integral of M * m / EI over the beam, exact for cubic moments.
point, weight = np.polynomial.legendre.leggauss(6)
x = np.concatenate([(l + r) / 2 + (r - l) / 2 * point for l, r in zip(nodes, nodes[1:])])
share = np.concatenate([(r - l) / 2 * weight / k for l, r, k in zip(nodes, nodes[1:], EI)])


def force(s):
    """The bending moment of an upward force of 1 N at s; its integral with another one is a deflection at s."""
    return np.where(x < s, s - x, 0.0)


def turn(s):
    """The same of a moment of 1 N*m, and of a rotation."""
    return np.where(x < s, 1.0, 0.0)


def integral(M, m):
    return np.sum(share * M * m)


def supported(M, at):
    """The moments and the forces of the supports under a load whose moments in the cantilever are M."""
    of_unit = [force(s) for s in at]
    flexibility = np.array([[integral(m, n) for n in of_unit] for m in of_unit])
    X = np.linalg.solve(flexibility, [-integral(M, m) for m in of_unit])
    return M + sum(f * m for f, m in zip(X, of_unit)), X


per_force = supported(force(e), [b, d])[0]
per_moment = supported(turn(e), [b, d])[0]
loads = -q * np.where(x < b, (b - x) ** 2 / 2, 0.0) - hoist * force(c) - sign * force(e)
M, X = supported(loads, [b, d])
u = [integral(M, m) for m in (turn(b), force(c), turn(c), turn(d), force(e), turn(e))]
within = q**2 * b**5 / (1440 * EI[0])  # a beam clamped at both ends, under its uniform load
energy = integral(M, M) / 2

total = q * b + hoist + sign
at_a = total - sum(X)
clamp = q * b**2 / 2 + hoist * c + sign * e - X[0] * b - X[1] * d

# A spring carries what its own force leaves of the deflection of the end.
spring = 3 / integral(per_force, force(e))
push = -u[4] / (1 / spring + integral(per_force, force(e)))
propped = [u[1] + push * integral(per_force, force(c)), u[4] + push * integral(per_force, force(e))]

os.chdir(pathlib.Path(__file__).resolve().parent)
newton, joule = "kg*m*s^-2", "kg*m^2*s^-2"
h = nodes[4] - nodes[3]


def column(values, unit=None, units=None):
    data = [[float(value)] for value in values]
    return {"unit": unit, "data": data} if units is None else {"units": [[u] for u in units], "data": data}


write("beam.json", [
    {"units": [["kg*s^-2", newton], [newton, joule]],
     "data": [[12 * EI[3] / h**3, -6 * EI[3] / h**2], [-6 * EI[3] / h**2, 4 * EI[3] / h]]},
    entry(integral(per_force, force(e)), "kg^-1*s^2"), entry(integral(per_force, turn(e)), "kg^-1*m^-1*s^2"),
    entry(integral(per_moment, turn(e)), "kg^-1*m^-2*s^2"),
    column(u, units=["", "m", "", "", "m", ""]), column([u[1], u[4]], "m"), column([u[0], u[2], u[3], u[5]], ""),
    entry(energy - within, joule), entry(energy - within, joule), entry(energy, joule),
    column([at_a, clamp, X[0], X[1]], units=[newton, joule, newton, newton]), column([at_a, X[0], X[1]], newton),
    entry(total, newton), entry(total, newton), entry(clamp, joule),
    entry(1 + spring * integral(per_force, force(e)), ""), column(propped, "m")])
