# Sway of a building of five storeys: stiff floors on columns that bend, and a damper under the first floor.
# The frequencies are eigenvalues of M^-1 * K, the shapes its eigenvectors.

n := 5
height(i) := if(i == 0, 4.5 m, 3.4 m)
mass(i) := if(i == n - 1, 61 t, 84 t)
columns := 12
E := 210 GPa
I(i) := if(i < 2, 11259, 8091) * cm^4    # HEB 240, above the second floor HEB 220

# Storey i moves floor i against the one below, with the stiffness of columns clamped at both ends.
k(i) := if(i < n, columns * 12 * E * I(i) / height(i)^3, 0 N/m)
stiffness(i, j) := if(i == j, k(i) + k(i + 1), if(abs(i - j) == 1, -k(if(i > j, i, j)), 0 N/m))
inertia(i, j) := if(i == j, mass(i), 0 t)
K := matrix(n, n, stiffness)
M := matrix(n, n, inertia)
D := inv(M) * K

"Stiffness of the storeys"
storey(i, column) := k(i)
matrix(n, 1, storey) -> kN/mm

# comeval gives the eigenvalues as it finds them.
squares := sort(Re(comeval(D)))
omega := sqrt(squares)
"Frequencies"
omega / (2 * pi) -> Hz

# A shape has no unit and any length: here the roof moves by 1.
shape(mode) := Re(eigenvec(D, squares[mode]) / eigenvec(D, squares[mode])[n - 1])
"The first two shapes"
augment(shape(0), shape(1))
"The square of the first frequency from the energies of its shape"
(shape(0)' * K * shape(0)) / (shape(0)' * M * shape(0))

# The ground shakes all floors alike: what part of the mass goes with each shape.
ones(i, j) := 1
push := M * matrix(n, 1, ones)
share(mode, column) := (shape(mode)' * push)^2 / (shape(mode)' * M * shape(mode)) / sigmasum(push)
"Share of the mass in the modes"
matrix(n, 1, share)
"Base shear where the spectrum asks for 2.1 m/s^2 in the first mode"
share(0, 0) * sigmasum(push) * 2.1 m/s^2 -> kN

# The damper makes the shapes complex. Displacements and velocities together, velocities times 1 s, so that the state
# matrix has one unit.
c := 900 kN*s/m
T := 1 s
damping(i, j) := if(i + j == 0, c / mass(0), 0 s^-1)
none := 0 * matrix(n, n, damping)
A := stack(augment(none, identity(n) / T), augment(-T * D, -matrix(n, n, damping)))
lambda := comeval(A)
"Damped frequencies"
angular := submatrix(sort(Im(lambda)), n, 2 * n - 1, 0, 0)
angular / (2 * pi) -> Hz
# The eigenvalue that belongs to one of them.
of(mode) := lambda[match(angular[mode], Im(lambda), "eq")[0]]
ratio(mode, column) := -Re(of(mode)) / abs(of(mode))
"Damping of the modes, as parts of the critical one"
matrix(n, 1, ratio)
"Phase of the floors against the roof in the first mode"
v := eigenvec(A, of(0))
phase(i, column) := arg(v[i] / v[n - 1])
matrix(n, 1, phase) -> deg
