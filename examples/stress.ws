# Principal stresses and directions by eigenvals and eigenvecs: at a point of a shaft, and under a strain rosette.

# The stresses on three planes at right angles: x along the shaft, y across it, z outwards.
S := [118, 46, -21; 46, -34, 12; -21, 12, 27] * MPa

# S is symmetric to the last bit, so the eigenvalues are real, largest first, in the unit of S.
s := eigenvals(S)
"Principal stresses"
s -> MPa

# Directions have no unit. Column k goes with stress k, and may point either way: here along x.
V := eigenvecs(S)
along(i, k) := if(V[0, k] < 0, -V[i, k], V[i, k])
directions := matrix(3, 3, along)
"Principal directions, a column each"
directions
angle(k, zero) := acos(directions[0, k])
"Their angles with the shaft"
matrix(3, 1, angle) -> deg
"The stresses in these directions: no shear is left"
directions' * S * directions -> MPa

# The same three numbers in other words.
"Sum and product of the principal stresses, over the trace and the determinant of S"
[sigmasum(s) / tr(S), s[0] * s[1] * s[2] / det(S)]
"Largest shear"
shear := (s[0] - s[2]) / 2
shear -> MPa
"Equivalent stress, and how many times it goes into a yield stress of 355 MPa"
equivalent := sqrt(((s[0] - s[1])^2 + (s[1] - s[2])^2 + (s[2] - s[0])^2) / 2)
equivalent -> MPa
355 MPa / equivalent

# The largest shear stands on the plane halfway between the first direction and the third.
axis(k) := submatrix(directions, 0, 2, k, k)
normal := (axis(0) + axis(2)) / sqrt(2)
traction := S * normal
pressure := normal' * traction
"Shear on that plane, over the largest one"
norm_f(traction - pressure * normal) / shear

# A rosette of three strain gauges on a steel sheet, at 0, 45 and 90 degrees.
gauges := [612e-6; 345e-6; -188e-6]
E := 210 GPa
nu := 0.3
# Strains are a matrix like stresses, with half the change of the right angle beside the diagonal.
half := gauges[1] - (gauges[0] + gauges[2]) / 2
strain := [gauges[0], half; half, gauges[2]]
"Principal strains"
eigenvals(strain)
# Nothing presses on the surface (plane stress).
stress := E / (1 + nu) * (strain + nu / (1 - nu) * tr(strain) * identity(2))
"Principal stresses of the sheet"
eigenvals(stress) -> MPa
W := eigenvecs(stress)
"Angle of the first one with the first gauge"
atan(W[1, 0] / W[0, 0]) -> deg
