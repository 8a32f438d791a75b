# Definitions, expressions, comments, statements over several lines.
x := 3
#{"kind":"definition","name":"x"}
x
#= 3
f(p, q) := p + 10 * q
#{"kind":"definition","name":"f"}
f(1, 2)
#= 21
	x	# blanks and tabs do not matter, comments end with the line

#{"kind":"number","re":3.0,"im":0.0,"unit":""}
[1, 2; # a line end inside brackets is a blank,
 3, 4] # and comments may stand there

#= [1, 2; 3, 4]
f(
  1,

  2
)
#= 21
y := (1
  + 2)
y
#= 3
# A sign begins a statement of its own.
-x
#= 0 - 3

# Anything may be redefined, also by itself.
x := x + 1
x
#= 4
x := "now a text"
x
#= "now a text"

# An error ends its statement only, and an earlier value stays.
x := nobody
#! "undefined name: nobody" -1 "" column 6
x
#= "now a text"
z := nobody
#! "undefined name: nobody" -1
z
#! "undefined name: z" -1 "" column 1

# The name of a definition that failed is nobody's, not a unit's.
A := lu([1, 2; 2, 4])
#! "singular matrix" -1 lu column 6
A
#! "undefined name: A" -1
mm := 1 +
#! syntax error column 10
2 mm
#! "undefined name: mm" -1
mm := 3
2 mm
#= 6

# What no statement is.
1 2
#! syntax error column 3
x :=
#! syntax error column 5
:= 3
#! syntax error column 1
1 := 3
#! syntax error column 3
[x] := 3
#! syntax error column 5
x := y := 3
#! syntax error column 8
x = 3
#! syntax error column 3
f(1, 2) := 3
#! syntax error column 9
f(p, p) := 3
#! syntax error column 6
