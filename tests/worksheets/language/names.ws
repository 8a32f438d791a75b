# Names: letters of any script, digits and _, not starting with a digit; case-sensitive.
a_1 := 1
_b := 2
größe := 3
длина := 4
長さ := 5
α2 := 6
نمو := 7
a_1 + _b + größe + длина + 長さ + α2 + نمو
#= 28
# Marks belong to the letters before them.
किमी := 8
किमी
#= 8
2a_1
#= 2
1a := 3
#! syntax error column 4
x² := 3
#! syntax error column 2
a.b := 3
#! syntax error column 2

# Case matters: V is the volt.
v := 1
V == v
#= 0
lu([2])
#= [1, 1, 2]
Lu([2])
#! "undefined name: Lu" -1 "" column 1

# A definition hides a unit, a constant or a function from there on.
1 m
#= 100 cm
m := 7
2 m
#= 14
pi := 3
pi
#= 3
sin := 5
sin
#= 5
sin(1)
#! "not a function: sin" -1 "" column 1
cos(x) := x + 1
cos(1)
#= 2
# Functions that use the old meaning by name see the new one.
h(x) := cos(x)
cos(x) := x + 2
h(1)
#= 3

nobody(1)
#! "undefined name: nobody" -1 "" column 1
3 + nobody
#! "undefined name: nobody" -1 "" column 5
v(1)
#! "not a function: v" -1 "" column 1
kg(1)
#! "not a function: kg" -1
inf(1)
#! "not a function: inf" -1
i
#! "undefined name: i" -1
