# Names of units; a quantity keeps its unit when it moves.
1 kg
#{"kind":"number","re":1.0,"im":0.0,"unit":"kg"}
1 N
#{"kind":"number","re":1.0,"im":0.0,"unit":"kg*m*s^-2"}
sqrt(1 m)
#{"kind":"number","re":1.0,"im":0.0,"unit":"m^1/2"}
1 m / m
#{"kind":"number","re":1.0,"im":0.0,"unit":""}
1 V * A * s / kg / K / mol / cd
#{"kind":"number","re":1.0,"im":0.0,"unit":"m^2*s^-2*K^-1*mol^-1*cd^-1"}
1 µm == 1 um
#= 1
1 μm == 1 µm
#= 1
1 mm
#{"kind":"number","re":0.001,"im":0.0,"unit":"m"}
1 t
#= 1000 kg
1 L
#= 0.001 m^3
1 bar
#= 1e5 Pa
1 hPa
#= 100 Pa
1 hr
#= 3600 s
1 minute
#= 60 s
1 day
#= 86400 s
12 in
#~ 1e-15 1 ft
3 ft
#~ 1e-15 1 yd
1 cL
#~ 1e-15 0.01 L
180 deg
#~ 1e-15 pi
# The coulomb, and the function `min`.
1 C
#= 1 A*s
# No prefixes there.
1 kft
#! "undefined name: kft" -1 "" column 3
1 khr
#! "undefined name: khr" -1
1 hm
#! "undefined name: hm" -1
1 kt
#! "undefined name: kt" -1
1 kkg
#! "undefined name: kkg" -1
m^1e300
#! "unit power not representable" -1 "" column 2
m^1i
#! "unit power not representable" -1
m^0.123456789
#! "unit power not representable" -1
