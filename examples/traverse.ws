# A closed traverse of six stations, walked clockwise: the angle inside at each station in degrees, minutes and seconds,
# and the distance to the next one. Angles and distances are adjusted, coordinates and the area come out.

file := read_csv("traverse.csv")
readings := submatrix(file, 1, rows(file) - 1, 0, cols(file) - 1)
n := rows(readings)
angle(k, j) := DMS(readings[k, 1], readings[k, 2], readings[k, 3])
distance(k, j) := readings[k, 4] * m
angles := matrix(n, 1, angle)
distances := matrix(n, 1, distance)

# The angles inside add up to (n - 2) half turns; what is missing is spread over all stations alike.
misclosure := sigmasum(angles) - (n - 2) * pi
"Misclosure of the angles in degrees, minutes and seconds"
DMS_inverse(misclosure)'
inside(k) := angles[k] - misclosure / n

# From A to B the compass shows 71 degrees, 5 minutes, 48 seconds; every other azimuth follows from the one before.
azimuth_of(k) := if(k == 0, DMS(71, 5, 48), azimuth_of(k - 1) + pi - inside(k))
azimuth(k, j) := azimuth_of(k)
azimuths := matrix(n, 1, azimuth)
in_dms(k, j) := DMS_inverse(azimuths[k])[j]
"Azimuths"
matrix(n, 3, in_dms)

# East and north of each leg. The legs should lead back to A; the gap is shared out in proportion to their lengths.
leg(k, j) := distances[k] * if(j == 0, sin(azimuths[k]), cos(azimuths[k]))
legs := matrix(n, 2, leg)
gap(i, j) := sigmasum(submatrix(legs, 0, n - 1, j, j))
gaps := matrix(1, 2, gap)
perimeter := sigmasum(distances)
"The gap, east and north, and how many times longer the perimeter is"
gaps -> mm
perimeter / sqrt(gaps[0]^2 + gaps[1]^2)
adjusted(k, j) := legs[k, j] - gaps[j] * distances[k] / perimeter

# Coordinates, from A at 5000 m east and 2000 m north.
coordinate(k, j) := if(k == 0, if(j == 0, 5000 m, 2000 m), coordinate(k - 1, j) + adjusted(k - 1, j))
stations := matrix(n, 2, coordinate)
names := submatrix(readings, 0, n - 1, 0, 0)
"Stations with their coordinates"
augment(names, stations)
"The station farthest to the north"
norths := submatrix(stations, 0, n - 1, 1, 1)
lookup(max(norths), norths, names)

# The area by trapezia below the legs, positive when walked clockwise.
next(k) := mod(k + 1, n)
trapezium(k, j) := (stations[next(k), 0] - stations[k, 0]) * (stations[next(k), 1] + stations[k, 1]) / 2
"Area"
sigmasum(matrix(n, 1, trapezium)) -> m^2
