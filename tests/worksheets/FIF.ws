# FIF(feet[, inches[, fraction]]): a length in feet, inches and a fraction of an inch, as a text or as numbers.

# Texts: feet with their mark, inches, a fraction behind a blank or a hyphen; the inch mark may be left out.
FIF("5' 3-1/2\"")
#= ((5*12 + 3) + 1/2) * 0.0254 * m
FIF("5' 3-1/2")
#= 63.5 * 0.0254 * m
FIF("5'3 1/2\"")
#= 63.5 * 0.0254 * m
FIF("5' 3\"")
#= 63 * 0.0254 * m
FIF("5'")
#= 60 * 0.0254 * m
FIF("3\"")
#= 3 * 0.0254 * m
FIF("3")
#= 3 * 0.0254 * m
FIF("3 1/2")
#= 3.5 * 0.0254 * m
FIF("7/8\"")
#= 0.875 * 0.0254 * m
FIF("5' 7/8")
#= 60.875 * 0.0254 * m
FIF("5'7/8\"")
#= 60.875 * 0.0254 * m
FIF("5'-7/8")
#= 60.875 * 0.0254 * m
FIF("5' 3\t\t1/2")
#= 63.5 * 0.0254 * m
FIF(" \n 5' 3-1/2\" \t")
#= 63.5 * 0.0254 * m
# Two digits of a numerator are no inches and a numerator.
FIF("11/2")
#= 5.5 * 0.0254 * m
FIF("5' 11/2")
#= 65.5 * 0.0254 * m
FIF("3 11/16")
#= 3.6875 * 0.0254 * m
# Inches and fractions are not bounded.
FIF("1' 30-5/4")
#= (12 + 30 + 1.25) * 0.0254 * m

# A sign leads and holds for all of it.
FIF("-5' 3-1/2\"")
#= -(63.5 * 0.0254) * m
FIF("+5' 3-1/2\"")
#= 63.5 * 0.0254 * m
FIF("-7/8")
#= -(0.875 * 0.0254) * m
FIF("-5'7/8")
#= -(60.875 * 0.0254) * m
# What is not there is 0.
FIF("")
#= 0 m
FIF(" ")
#= 0 m
FIF("\"")
#= 0 m
FIF("-")
#= -0.0 * m
FIF("1/0")
#= inf * m
FIF("0/0")
#= NaN * m

FIF("five feet")
#! "bad_fif_string" 1
FIF("5' 3x")
#! "bad_fif_string" 1
FIF("5' 3.5\"")
#! "bad_fif_string" 1
FIF("5 ft")
#! "bad_fif_string" 1
FIF("- 5'")
#! "bad_fif_string" 1
FIF("--5'")
#! "bad_fif_string" 1
FIF("5' -3")
#! "bad_fif_string" 1
FIF("5' 3\" 1/2")
#! "bad_fif_string" 1
FIF("5 '")
#! "bad_fif_string" 1
FIF("1/2/3")
#! "bad_fif_string" 1
FIF("1/")
#! "bad_fif_string" 1
FIF("5' 3 1 / 2")
#! "bad_fif_string" 1
FIF("3 - 1/2")
#! "bad_fif_string" 1
FIF("5' 3-1/2\"\"")
#! "bad_fif_string" 1
# Digits and blanks are those of ASCII; marks are straight.
FIF("٣")
#! "bad_fif_string" 1
FIF("5' 3")
#! "bad_fif_string" 1
FIF("5′ 3″")
#! "bad_fif_string" 1

# Numbers: the third is a fraction of an inch.
FIF(5, 3, 0.5)
#= 63.5 * 0.0254 * m
FIF(5, 3)
#= 63 * 0.0254 * m
FIF(5)
#= 60 * 0.0254 * m
FIF(5.5, -3)
#= 63 * 0.0254 * m
FIF(-5, 3, 0.5)
#= -56.5 * 0.0254 * m
FIF(0, 0, inf)
#= inf * m
FIF(NaN)
#= NaN * m

FIF(5 ft)
#! "must be real" 1
FIF(5, 3 in)
#! "must be real" 2
FIF(5, 3, 1 m)
#! "must be real" 3
FIF(5i)
#! "must be real" 1
FIF("5'", 3)
#! "must be real" 1
FIF(5, "3")
#! "must be real" 2
FIF(5, 3, "1/2")
#! "must be real" 3
FIF(["5'"])
#! "must be real" 1
FIF([5; 3])
#! "must be real" 1
FIF(sin)
#! "must be real" 1
FIF()
#! "wrong number of arguments" -1
FIF(1, 2, 3, 4)
#! "wrong number of arguments" -1
