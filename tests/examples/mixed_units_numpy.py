"""The shaft of examples/mixed_units.ws by the closed forms of a cantilever's two parts: no system is solved.

usage: mixed_units_numpy.py     (writes mixed_units.json beside itself; NumPy 1.24 for pi and arrays only)
"""
import os
import pathlib

import numpy as np

from recorded import entry, write

E = 210e9
EI1 = E * np.pi * 0.060**4 / 64
EI2 = E * np.pi * 0.040**4 / 64
a, b = 0.8, 0.6
P1, P2, M2 = -900.0, -400.0, 50.0

# What the outer part hands over at the step: force and moment.
Q = P1 + P2
M = M2 + P2 * b
v1 = Q * a**3 / (3 * EI1) + M * a**2 / (2 * EI1)
t1 = Q * a**2 / (2 * EI1) + M * a / EI1
v2 = v1 + t1 * b + P2 * b**3 / (3 * EI2) + M2 * b**2 / (2 * EI2)
t2 = t1 + P2 * b**2 / (2 * EI2) + M2 * b / EI2
support_force = -Q
support_moment = -(Q * a + M)

os.chdir(pathlib.Path(__file__).resolve().parent)
newton = "kg*m*s^-2"
write("mixed_units.json", [
    {"units": [["m"], [""], ["m"], [""]], "data": [[v1], [t1], [v2], [t2]]},
    entry(v2, "m"), entry(t2, ""),
    {"units": [[newton], ["kg*m^2*s^-2"]], "data": [[support_force], [support_moment]]}])
