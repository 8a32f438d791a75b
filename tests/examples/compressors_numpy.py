"""The regression of examples/compressors.ws by NumPy: columns in order by Gram and Schmidt, coefficients by lstsq.

usage: compressors_numpy.py     (writes compressors.json beside itself; NumPy 1.24)
"""
import csv
import os
import pathlib

import numpy as np

from recorded import entry, write

here = pathlib.Path(__file__).resolve().parent
with open(here.parent.parent / "examples" / "compressors.csv", encoding="utf-8") as file:
    log = np.array([[float(cell) for cell in row] for row in list(csv.reader(file))[1:]])

power = log[:, 5]
A = np.column_stack([np.ones(len(log)), log[:, 1:5]])

# what is left of each column when those taken before it are projected out, twice for the rounding
order, added, left = [], [], A.copy()
basis = np.zeros((len(log), 0))
for _ in range(5):
    sizes = [0.0 if k in order else np.linalg.norm(left[:, k]) for k in range(5)]
    k = int(np.argmax(sizes))
    q = A[:, k].copy()
    for _ in range(2):
        q -= basis @ (basis.T @ q)
    order.append(k)
    added.append(np.linalg.norm(q))
    basis = np.column_stack([basis, q / np.linalg.norm(q)])
    left = A - basis @ (basis.T @ A)

taken = order[:4]
c = np.zeros(5)
c[taken] = np.linalg.lstsq(A[:, taken], power, rcond=None)[0]
residual = power - A @ c
s = np.sqrt(residual @ residual / (len(power) - 4))
errors = s * np.sqrt(np.diag(np.linalg.inv(A[:, taken].T @ A[:, taken])))
kilowatt = "kg*m^2*s^-3"
cubic_metres = 0.3048**3  # in a cubic foot

os.chdir(here)
write("compressors.json", [
    entry(np.array(added).reshape(-1, 1), ""), entry(np.array(order, dtype=float).reshape(-1, 1), ""), entry(4.0, ""),
    entry(c[0] * 1e3, kilowatt), entry(c[4] * 1e3 * 60 / cubic_metres, "kg*m^-1*s^-2"),
    entry(c[2] * 1e3 / 1e5, "m^3*s^-1"), entry(c[3] * 1e3, "kg*m^2*s^-3*K^-1"), entry(s * 1e3, kilowatt),
    entry(errors.reshape(-1, 1), ""),
    entry(np.array([1, 30, 7, 20, 30 / cubic_metres]) @ c * 1e3, kilowatt)])
