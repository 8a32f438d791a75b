# A compressed-air station: which of the logged quantities explain the electric power? Pivoted QR puts the columns in
# order of what each adds to those before it. One column adds nothing: the logger holds the flow twice, in two units.

file := read_csv("compressors.csv")
hours := rows(file) - 1
logged(k) := submatrix(file, 1, hours, k, k)
flow := logged(1)
pressure := logged(2)
intake := logged(3)
flow_cfm := logged(4)
power := logged(5)

# Factors have no units, so the columns are plain numbers, and the coefficients get their units at the end.
one(i, j) := 1
A := augment(matrix(hours, 1, one), flow, pressure, intake, flow_cfm)
f := QR(A)
P := f[0]
Q := f[1]
R := f[2]

"What each column adds, in the order in which they were taken"
size(k, j) := abs(R[k, k])
d := matrix(5, 1, size)
d
"Which column that is: 0 stands for the constant"
index(i, j) := i
P' * matrix(5, 1, index)

# The flow in m^3/min comes last, and what it adds is the rounding of the numbers in the file. So the model has as many
# columns as add more than a millionth of what the first one holds.
counts(k) := if(k < 0, 0, (d[k] > 1e-6 * d[0]) + counts(k - 1))
r := counts(4)
"Columns in the model"
r

# A * P = Q * R, so the least-squares solution needs the first rows of Q' * power and the triangle above.
x := lsolve(submatrix(R, 0, r - 1, 0, r - 1), submatrix(Q' * power, 0, r - 1, 0, 0))
c := P * stack(x, 0)

"The constant: far from all that was logged, so no idle power"
c[0] * kW -> kW
"Power for each flow"
c[4] * kW / (ft^3/minute) -> kW / (m^3/minute)
"Power for each bar"
c[2] * kW / bar -> kW / bar
"Power for each kelvin at the intake"
c[3] * kW / K -> kW / K

residual := power - A * c
s := sqrt((residual' * residual) / (hours - r))
"Standard deviation of what is left"
s * kW -> kW

# The covariance of the coefficients is the variance times the inverse of R' * R.
Rinv := inv(submatrix(R, 0, r - 1, 0, r - 1))
error(k, j) := s * norm_f(submatrix(Rinv, k, k, 0, r - 1)')
"Standard errors of the coefficients, in the order of the columns taken"
matrix(r, 1, error)

"Power at 30 m^3/min, 7 bar and 20 C"
[1, 30, 7, 20, 30 / 0.3048^3] * c * kW -> kW
