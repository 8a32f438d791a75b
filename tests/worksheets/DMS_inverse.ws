# DMS_inverse(x): degrees, minutes and seconds of an angle in radians, within one turn.

DMS_inverse(0)
#= [0; 0; 0]
DMS_inverse(pi)
#= [180; 0; 0]
DMS_inverse(pi/2)
#= [90; 0; 0]
DMS_inverse(60.5 deg)
#~ 1e-12 [60; 30; 0]
floor(DMS_inverse((60 + 30/60 + 15.5/3600) * deg))
#= [60; 30; 15]
DMS_inverse((60 + 30/60 + 15.5/3600) * deg)[2]
#~ 1e-10 15.5

# All three have the sign of the angle, zeros too.
DMS_inverse(-pi/2)
#= [-90; -0.0; -0.0]
DMS_inverse(-60.25 deg)
#~ 1e-12 [-60; -15; 0]
DMS_inverse(-0.0)
#= [0; 0; 0]

# Whole turns go.
DMS_inverse(2 * pi)
#= [0; 0; 0]
DMS_inverse(-2 * pi)
#= [-0.0; -0.0; -0.0]
DMS_inverse(3 * pi)
#~ 1e-12 [180; 0; 0]
DMS_inverse(-450 deg)
#~ 1e-12 [-90; 0; 0]

# Nothing is rounded to whole seconds: an angle that lies a rounding below a full minute shows sixty of them.
floor(DMS_inverse(30.5 deg))
#= [30; 29; 59]
DMS_inverse(30.5 deg)
#~ 1e-10 [30; 29; 60]

# And back.
DMS(DMS_inverse(1.25))
#~ 1e-14 1.25
DMS(DMS_inverse(-1.25))
#~ 1e-14 -1.25

DMS_inverse(NaN)
#= "NaN"
DMS_inverse(inf)
#= [NaN; NaN; NaN]
DMS_inverse(-inf)
#= [NaN; NaN; NaN]

DMS_inverse(1 m)
#! "must be real" 1
DMS_inverse(1i)
#! "must be real" 1
DMS_inverse("1")
#! "must be real" 1
DMS_inverse([1])
#! "must be real" 1
DMS_inverse(sin)
#! "must be real" 1
