# Light between two mirrors. A ray is a height and an angle; free space and mirrors are matrices that take a ray on, with a
# length beside numbers and a reciprocal length. A round trip is the product of its parts, n trips are the n-th power.

space(distance) := [1, distance; 0 m^-1, 1]
mirror(radius) := [1, 0 m; -2 / radius, 1]
gap := 300 mm
left := mirror(400 mm)
right := mirror(500 mm)

# It begins and ends at the left mirror, just after the reflection.
trip := left * space(gap) * right * space(gap)
"A round trip"
trip
"Its determinant: what a ray gains in height, it loses in angle"
det(trip)

ray := [1 mm; 0.5 deg]
"The ray after a round trip, after a thousand, and a thousand round trips ago"
trip * ray
trip^1000 * ray
trip^-1000 * ray

# A ray stays near the axis as long as this number, which needs the diagonal only, is between 0 and 1.
stability(M) := (M[0, 0] + M[1, 1] + 2) / 4
trial(k, column) := if(column == 0, distance(k), stability(left * space(distance(k)) * right * space(distance(k))))
distance(k) := (k + 1) * 100 mm
"Distance of the mirrors, and whether rays stay"
matrix(10, 2, trial)

# The bundle that reproduces itself in every trip is as wide as this at the left mirror.
wavelength := 1064 nm
half_trace := (trip[0, 0] + trip[1, 1]) / 2
"Radius of the bundle at the left mirror"
sqrt(wavelength / pi * abs(trip[0, 1]) / sqrt(1 - half_trace^2)) -> µm
"Seen from the right mirror: the same trip in another order"
from_right := inv(left * space(gap)) * trip * (left * space(gap))
from_right
stability(from_right)
sqrt(wavelength / pi * abs(from_right[0, 1]) / sqrt(1 - half_trace^2)) -> µm
