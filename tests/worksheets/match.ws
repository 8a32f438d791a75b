# match(z, A, modifier): where the elements of A are that meet a condition on z.

v := [1; 2; 3; 2]
match(2, v)
#= [1; 3]
match(2, v, "eq")
#= [1; 3]
# Indices count from the origin, and have no unit.
set origin 1
match(2, v)
#= [2; 4]
match(2 m, v * m)
#= [2; 4]
set origin -5
match(2, v)
#= [-4; -2]
set origin 0

# In a matrix of more than one column each hit is a pair: row, column. Columns are searched one after the other.
match(2, [1, 2; 2, 2])
#= [[1; 0]; [0; 1]; [1; 1]]
match(2, v')
#= [[0; 1]; [0; 3]]
set origin 1
match(2, [1, 2; 2, 2])
#= [[2; 1]; [1; 2]; [2; 2]]
set origin 0
# A column is never searched as pairs, and one hit is a column too.
match(3, v)
#= [2]
match(3, v')
#= [[0; 2]]
match(5, [5])
#= [0]
# More hits than the first list holds.
match(1, [1; 1; 1; 1; 1; 1; 1; 0; 1; 1; 1; 1; 1; 1; 1])
#= [0; 1; 2; 3; 4; 5; 6; 8; 9; 10; 11; 12; 13; 14]
match(1, [1, 1, 1, 1, 1, 1, 0; 1, 1, 1, 1, 1, 1, 1])
#= [[0; 0]; [1; 0]; [0; 1]; [1; 1]; [0; 2]; [1; 2]; [0; 3]; [1; 3]; [0; 4]; [1; 4]; [0; 5]; [1; 5]; [1; 6]]

# Parts of a matrix.
M := [1, 2, 3; 2, 3, 1; 3, 1, 2]
match(1, submatrix(M, 1, 2, 1, 2))
#= [[1; 0]; [0; 1]]
match(3, submatrix(M, 1, 2, 1, 1))
#= [0]
match(3, submatrix(M, 0, 1, 2, 0))
#= [[0; 0]; [1; 1]]

# TOL: how far a number may lie off, the bound included.
match(2, [2.0005; 2.002; 1.9995; 1.9985])
#= [0; 2]
set tol 0
match(2, [2.0005; 2; 1.9999999999999998; 2])
#= [1; 3]
match(0, [0; -0.0; 4.9e-324])
#= [0; 1]
set tol 0.5
match(2, [1.5; 2.5; 1.25; 2.75; 2.25])
#= [0; 1; 4]
match(2, [1.5; 2.5; 1.25; 2.75; 2.25], "not")
#= [2; 3]
match(2, [1.5; 2.5; 1.25; 2.75; 2.25], "lt")
#= [2]
match(2, [1.5; 2.5; 1.25; 2.75; 2.25], "gt")
#= [3]
match(2, [1.5; 2.5; 1.25; 2.75; 2.25], "leq")
#= [0; 1; 2; 4]
match(2, [1.5; 2.5; 1.25; 2.75; 2.25], "geq")
#= [0; 1; 3; 4]
match([1; 2], [0.5; 0.25; 2.5; 2.75; 1.5], "range")
#= [0; 2; 4]
# It is a number of the target's SI unit.
match(2 mm, [1 mm; 502 mm; 503 mm])
#= [0; 1]
set tol 1e-3

# lt, gt, leq, geq, not.
match(2, v, "lt")
#= [0]
match(2, v, "gt")
#= [2]
match(2, v, "leq")
#= [0; 1; 3]
match(2, v, "geq")
#= [1; 2; 3]
match(2, v, "not")
#= [0; 2]

# range: between both elements of a column, bounds included; bounds in falling order hold nothing.
match([2; 3], v, "range")
#= [1; 2; 3]
match([2; 2], v, "range")
#= [1; 3]
match([3; 2], v, "range")
#! "no matching values found" -1
match([2 m; 3 m], [1 m; 2 m; 2 s; 3 m], "range")
#= [1; 3]
match(complex([2; 3]), v, "range")
#= [1; 2; 3]

# near: the nearest number, on both sides where both are as near.
match(2.4, [1; 2; 3], "near")
#= [1]
match(2.5, [1; 2; 3], "near")
#= [1; 2]
match(2.5, [3; 1; 2; 3], "near")
#= [0; 2; 3]
match(100, [1; 2; 3], "near")
#= [2]
match(-100, [1, 2; 3, 1], "near")
#= [[0; 0]; [1; 1]]
# Whatever lies within TOL of that distance is as near, and within TOL of a number that is hit exactly.
match(2.5, [1; 2; 3.0005; 3.002], "near")
#= [1; 2]
match(2, [1; 2; 2.0005; 2.002], "near")
#= [1; 2]
match(2.0001, [1; 2; 2.0005; 2.002], "near")
#= [1; 2]
# Imaginary parts do not count, nor do other units, texts and numbers that are not finite.
match(2, [2 + 5i; 3; 1i], "near")
#= [0]
match(2.2, [2 + 5i; 3; 1i], "near")
#= [0]
match(2.4 m, [2.4; 2.4 s; 1 m; 3 m; "2.4"], "near")
#= [3]
match(5, [inf; NaN; -inf; 7], "near")
#= [3]
match(0, [1e308; -1e308; 1.5e308], "near")
#= [0; 1]
# Distances that overflow are no candidates.
match(-1e308, [1.5e308; 1.7e308], "near")
#! "no matching values found" -1
match(-2^1023, [1.5e308; 2^1022], "near")
#= [1]
# The nearest are looked for between 3.6 - 3.5 and 3.6 + 3.5: without a tolerance rounding leaves 0.1 outside.
set tol 0
match(3.6, [0.1], "near")
#! "no matching values found" -1
match(3.5, [0; 7; 8], "near")
#= [0; 1]
set tol 1e-3
match(3.6, [0.1], "near")
#= [0]
match(5, ["a"; "b"], "near")
#! "no matching values found" -1
match(5, [1 m; 2 m], "near")
#! "no matching values found" -1
match(5, [NaN; inf], "near")
#! "no matching values found" -1

# Complex targets: both parts, each within TOL; the other modifiers look at real parts only.
c := [1; 1 + 1i; 2i; 1.0004 + 0.9996i]
match(1 + 1i, c)
#= [1; 3]
match(1 + 1i, c, "not")
#= [0; 2]
match(1, c)
#= [0]
match(1, c, "not")
#= [1; 2; 3]
match(0.5, c, "gt")
#= [0; 1; 3]
match(1, c, "leq")
#= [0; 1; 2; 3]
match([0; 0.5], c, "range")
#= [2]
match(1, complex([1; 2]))
#= [0]
match(1i, [0; 1; 2])
#! "no matching values found" -1
match(1i, [0; 1; 2], "not")
#= [0; 1; 2]
match(1 + 0.0005i, [0; 1; 2])
#= [1]
match(1 + 0.0005i, [0; 1; 2], "not")
#= [0; 2]

# What is not finite meets "not" and nothing else.
w := [NaN; inf; -inf; 1]
match(1, w)
#= [3]
match(1, w, "not")
#= [0; 1; 2]
match(0, w, "gt")
#= [3]
match(2, w, "lt")
#= [3]
match(1, w, "geq")
#= [3]
match(1, w, "leq")
#= [3]
match([-1e308; 1e308], w, "range")
#= [3]
match(1, [complex(1, inf); complex(1, NaN); 1], "not")
#= [0; 1]
match(1, [complex(1, inf); complex(1, NaN); 1], "geq")
#= [0; 1; 2]

# Numbers of another unit are never found: "not" ranks only what can be compared.
u := [1 m; 1 s; 2 m; 1]
match(1 m, u)
#= [0]
match(1 m, u, "not")
#= [2]
match(0 m, u, "gt")
#= [0; 2]
match(3, u, "lt")
#= [3]
match(1 kg, u)
#! "no matching values found" -1
match(1 kg, u, "not")
#! "no matching values found" -1
match(1 m, v)
#! "no matching values found" -1
match(1 ft, [1 ft, 304.8 mm; 1 m, 1 in])
#= [[0; 0]; [0; 1]]
# In columns of their own units.
match(2 s, [2 m, 2 s, 2 m; 1 m, 3 s, 2 s; 2 m, 2 s, 2 s])
#= [[0; 1]; [2; 1]; [1; 2]; [2; 2]]

# Texts: the very same characters.
t := ["a"; "A"; "ab"; ""; "a"]
match("a", t)
#= [0; 4]
match("", t)
#= [3]
match("a", t, "not")
#= [1; 2; 3]
match("A", t, "eq")
#= [1]
match("b", t)
#! "no matching values found" -1
# An e with an acute accent is one character, or a letter and a combining accent: two texts.
match("é", ["é"; "é"; "e"])
#= [1]
match("é", ["é"; "é"; "e"])
#= [0]
match("Ελλάδα", ["Россия"; "日本"; "Ελλάδα"; "ελλάδα"])
#= [2]
match("日本", ["日本", "日"; "本", "日本"])
#= [[0; 0]; [1; 1]]
match("line\n\"x\"\t", ["line"; "line\n\"x\"\t"])
#= [1]
match("👍🏽", ["👍"; "👍🏽"; "🏽"])
#= [1]

# Tables of everything: texts meet texts, numbers numbers, nested arrays nothing.
x := ["2", 2, [2, 2]; 2 m, "", NaN; "x", [2], 3]
match(2, x)
#= [[0; 1]]
match("2", x)
#= [[0; 0]]
match("", x)
#= [[1; 1]]
match(2, x, "not")
#= [[1; 2]; [2; 2]]
match("2", x, "not")
#= [[2; 0]; [1; 1]]
match(2 m, x, "geq")
#= [[1; 0]]
match(0, x, "gt")
#= [[0; 1]; [2; 2]]
match(2.2, x, "near")
#= [[0; 1]]
match(2, [[2, 2]; [2]])
#! "no matching values found" -1
match(2, [[2, 2]; [2]], "not")
#! "no matching values found" -1
match("a", [1; 2])
#! "no matching values found" -1
match("a", [1; 2], "not")
#! "no matching values found" -1
match(1, ["a"; "b"], "not")
#! "no matching values found" -1
# Short rows of a file are filled with empty texts.
match("", read_csv("data/ragged.csv"))
#= [[2; 0]; [0; 1]; [2; 1]; [0; 2]; [2; 2]; [3; 2]]
match(3, read_csv("data/ragged.csv"))
#= [[1; 1]]
match("a, b", read_csv("data/quoted.csv"))
#= [[0; 0]]

# A function of element and z: any whole number but 0 is a hit.
divides(element, z) := mod(element, z) == 0
match(3, [3; 4; 6; 9], divides)
#= [0; 2; 3]
match(3, [3, 4; 6, 9], divides)
#= [[0; 0]; [1; 0]; [1; 1]]
minus(element, z) := element - z
match(2, v, minus)
#= [0; 2]
any(element, z) := 1
none(element, z) := 0
match("nothing", [1, "a"; [1, 2], 1 m], any)
#= [[0; 0]; [1; 0]; [0; 1]; [1; 1]]
match(1, v, none)
#! "no matching values found" -1
# z may be anything, also a function; the element comes with its unit, texts and arrays as they are.
holds(element, z) := z(element, 0)
positive(a, b) := a > b
match(positive, [-1; 1; 2], holds)
#= [1; 2]
in_metres(element, z) := element == z
match(1 m, [1; 1 m; 1 s; 100 cm; "1 m"; [1 m]], in_metres)
#= [1; 3]
match([1, 2], [[1, 2]; [1; 2]; [1, 2]; 1], in_metres)
#= [0; 2]
longer(element, z) := rows(element) > rows(z)
match([0; 0], [[1; 2], [1; 2; 3]; 5, "text"], longer)
#= [[0; 1]]
# Functions of the library and of the host are functions too; the unit of the whole number is not looked at.
match(2, [2; 3; 4], mod)
#= [1]
match(2 m, [2 m; 3 m], mod)
#= [1]
match(1, [0; 5; 2], mult)
#= [1; 2]
huge(element, z) := 1e300
match(0, [1], huge)
#= [0]
minus_zero(element, z) := -0.0
match(0, [1], minus_zero)
#! "no matching values found" -1
# It is asked column by column, the first error ends the search.
asks(element, z) := if(element == 3, [1][0, 9], if(element == 2, 1 + "row 1 of column 0", 0))
match(0, [1, 3; 2, 4], asks)
#! "must be a scalar or a matrix" 2
# Functions that search themselves, and call themselves.
found_in(element, z) := rows(match(z, element))
match(2, [[1; 2], [2; 2]; [2, 2], [2; 1]], found_in)
#= [[0; 0]; [1; 0]; [0; 1]; [1; 1]]
match(7, [[1; 2], [2; 7]], found_in)
#! "no matching values found" -1 match
by_itself(element, z) := if(z > 3, 1, rows(match(z + 1, [element], by_itself)))
match(0, [1; 2], by_itself)
#= [0; 1]
for_ever(element, z) := rows(match(z, [element], for_ever))
match(0, [1], for_ever)
#! "nesting too deep" -1
itself(element, z) := itself(element, z)
match(0, [1], itself)
#! "nesting too deep" -1

# What the function gives is a whole number.
half(element, z) := 0.5
match(0, [1], half)
#! "This function must return an integer value" 3
imaginary(element, z) := 1i
match(0, [1], imaginary)
#! "This function must return an integer value" 3
infinite(element, z) := inf
match(0, [1], infinite)
#! "This function must return an integer value" 3
not_a_number(element, z) := NaN
match(0, [1], not_a_number)
#! "This function must return an integer value" 3
text(element, z) := "1"
match(0, [1], text)
#! "This function must return an integer value" 3
array(element, z) := [1]
match(0, [1], array)
#! "This function must return an integer value" 3
gives_function(element, z) := sin
match(0, [1], gives_function)
#! "This function must return an integer value" 3
fails(element, z) := 1 / 0
match(0, [1], fails)
#! "divide by zero" 2
fails_inside(element, z) := inv([1, 1; 1, 1])
match(0, [1], fails_inside)
#! "singular matrix" -1
undefined(element, z) := no_such_name
match(0, [1], undefined)
#! "undefined name: no_such_name" -1
# After an error the next search is as good as any.
match(2, v)
#= [1; 3]
one_argument(x) := x
match(0, [1], one_argument)
#! "must be a function of 2 variables" 3
three_arguments(x, y, z) := x
match(0, [1], three_arguments)
#! "must be a function of 2 variables" 3
match(0, [1], sqrt)
#! "must be a function of 2 variables" 3
match(0, [1], if)
#! "must be a function of 2 variables" 3
# No element, no call; but a function that cannot be called is named all the same.
match(0, [], fails)
#! "no matching values found" -1
match(0, [], one_argument)
#! "must be a function of 2 variables" 3

# A is a matrix.
match(1, 1)
#! "must be matrix" 2
match("a", "a")
#! "must be matrix" 2
match(1, sin)
#! "must be matrix" 2
match(1, [])
#! "no matching values found" -1
match("a", [], "not")
#! "no matching values found" -1
match(1, [], "near")
#! "no matching values found" -1

# TOL is looked at after A and before the modifier.
set tol -1e-3
match(2, v)
#! "illegal TOL" -1
match(2, v, "nonsense")
#! "illegal TOL" -1
match(2, v, 5)
#! "illegal TOL" -1
match(2, v, any)
#! "illegal TOL" -1
match(2, 2)
#! "must be matrix" 2
set tol NaN
match(2, v)
#! "illegal TOL" -1
set tol inf
match(2, v)
#! "illegal TOL" -1
set tol -0.0
match(2, v)
#= [1; 3]
set tol 1e-3

# Modifiers are words, exactly.
match(2, v, "EQ")
#! "invalid modifier" 3
match(2, v, "eq ")
#! "invalid modifier" 3
match(2, v, "")
#! "invalid modifier" 3
match(2, v, "..")
#! "invalid modifier" 3
match(2, v, 1)
#! "invalid modifier" 3
match(2, v, ["eq"])
#! "invalid modifier" 3
# An unknown word is named before a wrong target.
match([1, 2], v, "nonsense")
#! "invalid modifier" 3
match([1, 2], v, 1)
#! "invalid modifier" 3

# eq and not: a number or a text.
match([1, 2], v)
#! "must be a string or a scalar" 1
match(sin, v, "not")
#! "must be a string or a scalar" 1
match(inf, v)
#! "must be scalar" 1
match(NaN, v, "not")
#! "must be scalar" 1
match(complex(1, inf), v)
#! "must be scalar" 1

# The orderings and near: a real, finite number.
match("a", t, "lt")
#! "must be scalar" 1
match([1], v, "gt")
#! "must be scalar" 1
match([1; 2], v, "near")
#! "must be scalar" 1
match(sin, v, "leq")
#! "must be scalar" 1
match(1i, v, "lt")
#! "must be real" 1
match(1 + 1e-300i, v, "geq")
#! "must be real" 1
match(complex(1, NaN), v, "near")
#! "must be real" 1
match(inf, v, "gt")
#! "must be real" 1
match(-inf, v, "near")
#! "must be real" 1
match(NaN, v, "leq")
#! "must be real" 1
match(complex(2, 0), v, "lt")
#= [0]

# range: a column of two real, finite numbers of one unit, refused in this order.
match(1, v, "range")
#! "must be vector" 1
match("a", v, "range")
#! "must be vector" 1
match([1, 2], v, "range")
#! "must be vector" 1
match([1, 2; 3, 4], v, "range")
#! "must be vector" 1
match([1; 2; 3], v, "range")
#! "invalid range" 1
match([1], v, "range")
#! "invalid range" 1
match(["a"; "b"; "c"], v, "range")
#! "invalid range" 1
match([1 m; 2 s], v, "range")
#! "must be of uniform units" 1
match([0; 2 m], v, "range")
#! "must be of uniform units" 1
match(["a"; "b"], t, "range")
#! "must be of uniform units" 1
match([1; "b"], t, "range")
#! "must be of uniform units" 1
match([[1]; [2]], v, "range")
#! "must be of uniform units" 1
match([1; 2i], v, "range")
#! "must be real vector" 1
match([1; inf], v, "range")
#! "must be real vector" 1
match([NaN; 2], v, "range")
#! "must be real vector" 1

# Indices beyond 32 bits: only hits count.
set origin 2147483646
match(1, [1; 1])
#= [2147483646; 2147483647]
match(1, [1; 1; 1])
#! "index out of bounds" -1
match(1, [1; 1; 2])
#= [2147483646; 2147483647]
match("a", ["a", "b", "a"])
#! "index out of bounds" -1
match(1, [1, 1, 2])
#= [[2147483646; 2147483646]; [2147483646; 2147483647]]
match(1, [1; 1; 1], any)
#! "index out of bounds" -1
set origin -2147483648
match(1, [1; 2; 1])
#= [-2147483648; -2147483646]
set origin 0

match(1)
#! "wrong number of arguments" -1
match(1, v, "eq", 1)
#! "wrong number of arguments" -1
