"""The calibration of examples/calibration.ws by NumPy.

usage: calibration_numpy.py     (writes calibration.json beside itself; NumPy 1.24, numpy.linalg.lstsq)
"""
import csv
import os
import pathlib

import numpy as np

from recorded import entry, write

here = pathlib.Path(__file__).resolve().parent
with open(here.parent.parent / "examples" / "calibration.csv", encoding="utf-8") as file:
    readings = np.array([[float(cell) for cell in row] for row in list(csv.reader(file))[1:]])

# in mV and bar, where the columns are of one size; the units come afterwards
v, p = readings.T
A = np.vander(v, 3, increasing=True)
c = np.linalg.lstsq(A, p, rcond=None)[0]
residual = A @ c - p
pascal = "kg*m^-1*s^-2"
volt = np.array([1.0, 1e-3, 1e-6])  # in powers of a millivolt
coefficients = c * 1e5 / volt
units = [pascal, "m^-3*s*A", "kg^-1*m^-5*s^4*A^2"]  # Pa, Pa/V, Pa/V^2
curve = {"units": [["kg*m^2*s^-3*A^-1", pascal]] * len(v),
         "data": np.column_stack([v * 1e-3, A @ c * 1e5]).tolist()}

os.chdir(here)
write("calibration.json", [
    {"units": [[unit] for unit in units], "data": coefficients.reshape(-1, 1).tolist()},
    entry(coefficients[0], units[0]), entry(coefficients[1], units[1]), curve,
    entry(np.sqrt(residual @ residual / (len(v) - 3)) * 1e5, pascal),
    entry(np.polyval(c[::-1], 7.25) * 1e5, pascal)])
