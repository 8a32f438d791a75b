# DMS(degrees[, minutes[, seconds]]): an angle in radians, from numbers or from a column of them.

DMS(180)
#~ 1e-14 pi
DMS(90, 0, 0)
#~ 1e-14 pi/2
DMS(60, 30)
#~ 1e-14 60.5 deg
DMS(60, 30, 15.5)
#~ 1e-14 (60 + 30/60 + 15.5/3600) * deg
DMS(0, 0, 1)
#= 4.84813681109536e-06
DMS(0)
#= 0
DMS(60, 30, 15.5)
#= (60 * 60 * 60 + 30 * 60 + 15.5) * 4.84813681109536e-06
# Each number has its own sign; none of them is bounded.
DMS(-60, 30)
#= (-60 * 60 * 60 + 30 * 60) * 4.84813681109536e-06
DMS(-60, -30, -15.5)
#= -((60 * 60 * 60 + 30 * 60 + 15.5) * 4.84813681109536e-06)
DMS(0, 90, 3600)
#= 9000 * 4.84813681109536e-06
DMS(720)
#~ 1e-14 4 * pi
DMS(inf)
#= inf
DMS(NaN, 30)
#= NaN

# A column of up to three.
DMS([60; 30; 15.5])
#= (60 * 60 * 60 + 30 * 60 + 15.5) * 4.84813681109536e-06
DMS([60; 30])
#= (60 * 60 * 60 + 30 * 60) * 4.84813681109536e-06
DMS([60])
#= 60 * 60 * 60 * 4.84813681109536e-06
angles := [60, 10; 30, 20; 15.5, 30]
DMS(submatrix(angles, 0, 2, 1, 1))
#= (10 * 60 * 60 + 20 * 60 + 30) * 4.84813681109536e-06
DMS(submatrix(angles, 1, 2, 0, 0))
#= (30 * 60 * 60 + 15.5 * 60) * 4.84813681109536e-06

DMS([1; 2; 3; 4])
#! "must be a 3 element vector" 1
DMS([1i; 2; 3])
#! "must be real vector" 1
DMS(complex([1; 2; 3]))
#! "must be real vector" 1
DMS([1; "2"; 3])
#! "must be real vector" 1
DMS([[1]; 2])
#! "must be real vector" 1
DMS([1; 2; 3] * deg)
#~ 1e-14 (1 + 2/60 + 3/3600) * deg^2
DMS([1; 2; 3] * m)
#! "must be dimless" 1
DMS([1 m; 2; 3])
#! "must be dimless" 1
# The elements are looked at before their number.
DMS([1 m; 2; 3; 4])
#! "must be dimless" 1
DMS([1i; 2; 3; 4] * m)
#! "must be real vector" 1

DMS([60, 30, 15.5])
#! "must be real" 1
DMS([])
#! "must be real" 1
DMS([60; 30], 15)
#! "must be real" 1
DMS("60")
#! "must be real" 1
DMS(60 m)
#! "must be real" 1
DMS(1i)
#! "must be real" 1
DMS(60, [30])
#! "must be real" 2
DMS(60, "30", 1i)
#! "must be real" 2
DMS(60, 30, 1 s)
#! "must be real" 3
DMS(sin)
#! "must be real" 1
DMS()
#! "wrong number of arguments" -1
DMS(1, 2, 3, 4)
#! "wrong number of arguments" -1
