"""The components of examples/principal_components.ws by NumPy, from the correlations instead of the standard variables.

usage: principal_components_numpy.py     (writes principal_components.json beside itself; NumPy 1.24, numpy.linalg.eigh)
"""
import os
import pathlib
import re

import numpy as np

from recorded import entry, write

here = pathlib.Path(__file__).resolve().parent
text = (here.parent.parent / "examples" / "principal_components.ws").read_text(encoding="utf-8")
rows = re.search(r"X := \[(.*?)\]", text, re.S).group(1).split(";")
X = np.array([[float(x) for x in row.split(",")] for row in rows])

# the data are typed in as they were published: employment depends on them by the coefficients that NIST certifies
employment = np.array([60323, 61122, 60171, 61187, 63221, 63639, 64989, 63761, 66019, 67857, 68169, 66513, 68655, 69564,
                       69331, 70551], float)
centred = (X - X.mean(axis=0)) / X.std(axis=0)
certified = [15.0618722713733, -0.0358191792925910, -2.02022980381683, -1.03322686717359, -0.0511041056535807,
             1829.15146461355]
assert np.allclose(np.linalg.lstsq(centred, employment, rcond=None)[0] / X.std(axis=0), certified, rtol=1e-9)

variance, loading = np.linalg.eigh(np.corrcoef(X, rowvar=False))
variance, loading = variance[::-1], loading[:, ::-1]
loading = loading * np.sign(loading[0])
score = (X - X.mean(axis=0)) / X.std(axis=0, ddof=1) @ loading

os.chdir(here)
write("principal_components.json", [
    entry(loading, ""), entry(variance.reshape(-1, 1), ""), entry(variance[:2].sum() / variance.sum(), ""),
    entry(np.column_stack([X[:, 5], score[:, :2]]), ""), entry(np.sqrt(variance[0] / variance[5]), "")])
