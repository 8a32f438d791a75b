# FIF_inverse(x): the text of a length in feet, inches and fractions of an inch.

FIF_inverse(1.6129 m)
#= "5' 3-1/2\""
FIF_inverse(0.3048 m)
#= "1' 0\""
FIF_inverse(1 ft + 3 in)
#= "1' 3\""
FIF_inverse(0.875 in)
#= "0' 7/8\""
FIF_inverse(5 ft + 0.875 in)
#= "5' 7/8\""
FIF_inverse(1 in)
#= "0' 1\""
FIF_inverse(0 m)
#= "0' 0\""
FIF_inverse(-1.6129 m)
#= "-5' 3-1/2\""
FIF_inverse(-0.0 * m)
#= "0' 0\""
FIF_inverse(1 m)
#= "3' 3-47/127\""

# The last convergent of the continued fraction whose denominator is at most 256.
FIF_inverse(0.00390625 in)
#= "0' 1/256\""
FIF_inverse(0.99609375 in)
#= "0' 255/256\""
FIF_inverse(in / 3)
#= "0' 1/3\""
FIF_inverse(in / 257)
#= "0' 0\""
FIF_inverse(0.7182818284590452 in)
#= "0' 51/71\""

# A fraction that rounds up to an inch carries, and twelve inches are a foot.
FIF_inverse(0.9999 in)
#= "0' 1\""
FIF_inverse(3.9999 in)
#= "0' 4\""
FIF_inverse(11.9999 in)
#= "1' 0\""
FIF_inverse(-11.9999 in)
#= "-1' 0\""
FIF_inverse(23.9999 in)
#= "2' 0\""

# Feet are written out, however many.
FIF_inverse(1e6 ft)
#= "1000000' 0\""
FIF_inverse(1234567890123 ft)
#= "1234567890123' 0\""
FIF_inverse(1e21 * ft)
#= "1000000000000000000000' 0\""
FIF_inverse(1e-300)
#= "0' 0\""
FIF_inverse(-1e-300)
#= "-0' 0\""
FIF_inverse(NaN)
#= "NaN"
FIF_inverse(inf * m)
#= "inf"
FIF_inverse(-inf * m)
#= "-inf"
# So is a length whose inches no double holds.
FIF_inverse(1e307)
#= "inf"
FIF_inverse(-1e308)
#= "-inf"

# Metres are meant; what unit stands there is not looked at.
FIF_inverse(1.6129)
#= "5' 3-1/2\""
FIF_inverse(1.6129 s)
#= "5' 3-1/2\""
# And back.
FIF_inverse(FIF("17' 11-63/64\""))
#= "17' 11-63/64\""

FIF_inverse(1i)
#! "must be real" 1
FIF_inverse("5'")
#! "must be real" 1
FIF_inverse([1 m])
#! "must be real" 1
FIF_inverse(sin)
#! "must be real" 1
