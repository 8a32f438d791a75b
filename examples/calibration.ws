# A pressure gauge is calibrated: p = c0 + c1 * v + c2 * v^2 through 25 readings, by least squares. The columns of A
# have units of their own, so each coefficient comes out with the unit that it needs.

file := read_csv("calibration.csv")
readings := submatrix(file, 1, rows(file) - 1, 0, 1)
v := submatrix(readings, 0, rows(readings) - 1, 0, 0) * mV
p := submatrix(readings, 0, rows(readings) - 1, 1, 1) * bar

row(i, k) := v[i]^k
A := matrix(rows(v), 3, row)
c := lsolve(A, p)

"Coefficients"
c
"Offset"
c[0] -> mbar
"Sensitivity at the lower end"
c[1] -> bar/mV

residual := A * c - p
"Readings and what the curve says"
augment(v, A * c)
"Root of the mean square of the residuals"
sqrt((residual' * residual) / (rows(v) - 3)) -> mbar

"Pressure at 7.25 mV"
at(x) := [1, x, x^2] * c
at(7.25 mV) -> bar
