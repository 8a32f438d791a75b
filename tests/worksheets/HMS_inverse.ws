# HMS_inverse(x): the text of a time in hours, minutes and seconds.

HMS_inverse(3661.25 s)
#= "1:1:1.25"
HMS_inverse(0 s)
#= "0:0:0"
HMS_inverse(59 s)
#= "0:0:59"
HMS_inverse(1 hr + 1 minute + 1.25 s)
#= "1:1:1.25"
HMS_inverse(2 day)
#= "48:0:0"
HMS_inverse(-3661.25 s)
#= "-1:1:1.25"
HMS_inverse(-0.0 * s)
#= "0:0:0"

# Seconds are rounded to the millisecond, and do not carry.
HMS_inverse(1.2345 s)
#= "0:0:1.235"
HMS_inverse(1.0004 s)
#= "0:0:1"
HMS_inverse(0.0004 s)
#= "0:0:0"
HMS_inverse(0.0005 s)
#= "0:0:0.001"
HMS_inverse(-0.0001 s)
#= "-0:0:0"
HMS_inverse(0.007 s)
#= "0:0:0.007"
HMS_inverse(59.9994 s)
#= "0:0:59.999"
HMS_inverse(59.9996 s)
#= "0:0:60"

# Hours are written out, however many.
HMS_inverse(3.6e12 s)
#= "1000000000:0:0"
HMS_inverse(1e6 hr)
#= "1000000:0:0"
HMS_inverse(NaN * s)
#= "NaN"
HMS_inverse(inf * s)
#= "inf"
HMS_inverse(-inf)
#= "-inf"

# Seconds are meant; what unit stands there is not looked at.
HMS_inverse(3661.25)
#= "1:1:1.25"
HMS_inverse(3661.25 m)
#= "1:1:1.25"
# And back.
HMS(HMS_inverse(98765.432 s))
#~ 1e-12 98765.432 s

HMS_inverse(1i)
#! "must be real" 1
HMS_inverse("1:02:03")
#! "must be real" 1
HMS_inverse([1 s])
#! "must be real" 1
HMS_inverse(sin)
#! "must be real" 1
