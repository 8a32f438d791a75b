# A steel frame of four storeys and one bay that sways: natural frequencies and mode shapes by genvals and genvecs.
# The beams bend, so each floor has a sway and a rotation of its two joints; only the sway has mass.

n := 4
E := 210 GPa
bay := 7.2 m
height(i) := if(i == 0, 4.2 m, 3.5 m)
mass(i) := if(i == n - 1, 26 t, 34 t)
column(i) := E * if(i < 2, 14920, 8091) * cm^4    # HEB 260, above the second floor HEB 220
beam := E * 16270 cm^4                            # IPE 360

# Two columns with clamped ends resist the sway u and the rotation r of the joints (as if there were a last storey of
# no stiffness above the roof); a beam whose ends turn alike resists with 6 E I / bay at each end.
sway(i) := if(i < n, 2 * 12 * column(i) / height(i)^3, 0 N/m)
turn(i) := if(i < n, 2 * 6 * column(i) / height(i)^2, 0 N)
bend(i) := if(i < n, 2 * 2 * column(i) / height(i), 0 N*m)
upper(i, j) := if(i > j, i, j)
uu(i, j) := if(i == j, sway(i) + sway(i + 1), if(abs(i - j) == 1, -sway(upper(i, j)), 0 N/m))
ur(i, j) := if(i == j, turn(i + 1) - turn(i), if(j == i + 1, turn(j), if(i == j + 1, -turn(i), 0 N)))
rr(i, j) := if(i == j, 2 * bend(i) + 2 * bend(i + 1) + 12 * beam / bay, if(abs(i - j) == 1, bend(upper(i, j)), 0 N*m))
Kuu := matrix(n, n, uu)
Kur := matrix(n, n, ur)
Krr := matrix(n, n, rr)

# The joints turn so that no moment is left on them: the stiffness against sway alone.
follow := -inv(Krr) * Kur'
K := Kuu + Kur * follow
inertia(i, j) := if(i == j, mass(i), 0 t)
M := matrix(n, n, inertia)
"Stiffness of the frame against sway"
K -> kN/mm

# K * shape = omega^2 * M * shape. genvals drops the units of K and M: it computes with their SI numbers, N/m and kg.
# So the eigenvalues are numbers of (N/m)/kg, which is s^-2, whatever units K and M were written in.
lambda := genvals(K, M)
"What genvals gives: no unit, largest first, with imaginary parts of 0"
lambda
omega := sqrt(Re(reverse(lambda)) * (N/m)/kg)
"Frequencies, the lowest first"
omega / (2 * pi) -> Hz

# Column k of genvecs belongs to element k of genvals, so the lowest mode is the last one. Shapes have no unit and any
# length: here the roof moves by 1.
V := Re(genvecs(K, M))
scaled(i, mode) := V[i, n - 1 - mode] / V[n - 1, n - 1 - mode]
shapes := matrix(n, n, scaled)
"Mode shapes, a column each"
shapes

# That the unit was put back rightly shows in what keeps units all the way: the energies of the shapes.
modal_K := shapes' * K * shapes
modal_M := shapes' * M * shapes
energies(mode, zero) := sqrt(modal_K[mode, mode] / modal_M[mode, mode]) / omega[mode]
"Frequencies from energies, over those of genvals"
matrix(n, 1, energies)
"Masses of the modes; what is beside the diagonal is rounding"
modal_M -> t

# The joints in the first mode, where the roof sways by 10 mm.
"Rotation of the joints"
follow * submatrix(shapes, 0, n - 1, 0, 0) * 10 mm -> deg

# Beams that do not bend would hold the joints still.
stiff := sqrt(Re(reverse(genvals(Kuu, M))) * (N/m)/kg)
"What stiff beams would add to the frequencies"
more(mode, zero) := stiff[mode] / omega[mode] - 1
matrix(n, 1, more)
