# div(a, b), a / b: numbers, element by element, or times the inverse of a square matrix.

6 / 3
#= 2
1 / 3
#= 0.3333333333333333
(6 m) / (2 s)
#= 3 m/s
div(1, 4)
#= 0.25
-0.0 / 2
#= -0.0
1 / inf
#= 0
inf / inf
#= NaN
1e300 / 1e-300
#= inf

# Complex quotients by Smith's method: no overflow on the way.
(1 + 2i) / (3 + 4i)
#= 0.44 + 0.08i
(1e300 + 1e300i) / (1e300 + 1e300i)
#= 1
(5 + 10i) / (1 - 2i)
#= -3 + 4i
(3 + 4i) / 2
#= 1.5 + 2i
complex(inf, 1) / 2
#= complex(inf, 0.5)
1 / 2i
#= 0 - 0.5i
4i / 2i
#= 2
1 / (1 + 1i)
#= 0.5 - 0.5i

# Nothing is divided by zero ...
1 / 0
#! "divide by zero" 2 ""
0 / 0
#! "divide by zero" 2
1 / -0.0
#! "divide by zero" 2
1i / complex(0, 0)
#! "divide by zero" 2
div(1, 0)
#! "divide by zero" 2 div
(1 m) / (0 s)
#! "divide by zero" 2
[1, 2] / 0
#! "divide by zero" 2
1 / [1, 0, 2]
#! "divide by zero" 2
[1, 2] / [1, 0]
#! "divide by zero" 2
[1i, 2] / [1, 0]
#! "divide by zero" 2

# ... but 0/0 is 0 where that is asked for.
set zero_over_zero_is_zero on
0 / 0
#= 0
(0 m) / (0 s)
#= 0 m/s
-0.0 / 0
#= 0
complex(0, 0) / complex(0, 0)
#= 0
[0, 2] / [0, 4]
#= [0, 0.5]
[0, 2i] / [0, 4]
#= [0, 0.5i]
[0, 0] / 0
#= [0, 0]
0 / [0, 0]
#= [0, 0]
1 / 0
#! "divide by zero" 2
1i / 0
#! "divide by zero" 2
[0, 1] / 0
#! "divide by zero" 2
set zero_over_zero_is_zero off

# A matrix by a number, a number by the elements of a matrix that is not square.
[2, 4; 6, 8] / 2
#= [1, 2; 3, 4]
12 / [1, 2, 3]
#= [12, 6, 4]
(12 m) / [1 s; 2 s]
#= [12 m/s; 6 m/s]
[2 m, 4 s] / (2 s)
#= [1 m/s, 2]
[2, 4i] / 2i
#= [0 - 1i, 2]
2i / [1i; 2i]
#= [2; 1]
complex([2, 4]) / 2
#= [1, 2]
[] / 2
#= []
[] / 0
#= []

# Matrices element by element.
[2, 4, 6] / [1, 2, 3]
#= [2, 2, 2]
[2 m, 4 s] / [1 s, 2 m]
#= [2 m/s, 2 s/m]
[2 m, 4 m] / [1 s, 2 s]
#= [2 m/s, 2 m/s]
[1i; 2] / [2; 4i]
#= [0.5i; 0 - 0.5i]
[1i, 2i] / [1i, 2i]
#= [1, 1]
B := [1, 2, 3; 4, 5, 6; 7, 8, 10]
submatrix(B, 0, 2, 1, 2) / submatrix(B, 0, 2, 0, 1)
#= [2, 1.5; 1.25, 1.2; 8 / 7, 1.25]

# Arrays among the elements are entered.
[[2, 4], 6] / 2
#= [[1, 2], 3]
12 / [[1, 2; 3, 4], 6]
#= [[12, 6; 4, 3], 2]
[[2, 4], 6, [8]] / [2, [1, 2], [4]]
#= [[1, 2], [6, 3], [2]]
[[2, 4], 6] / [[1, 2, 3], 2]
#! "array size mismatch" -1

# A square matrix divides as its inverse.
1 / [2, 0; 0, 4]
#= [0.5, 0; 0, 0.25]
[2, 0; 0, 4] / [2, 0; 0, 4]
#= [1, 0; 0, 1]
[4, 6] / [2, 0; 0, 4]
#= [2, 1.5]
[1] / [4]
#= 0.25
(1 m) / ([2, 0; 0, 4] * s)
#= [0.5 m/s, 0 m/s; 0 m/s, 0.25 m/s]
[6 N, 8 N*m] / [2 N/m, 0 N; 0 N, 4 N*m]
#= [3 m, 2]
div(1, [1, 2; 2, 4])
#! "singular matrix" -1
1 / [0]
#! "singular matrix" -1
div(1, [])
#! "invalid dimension" -1
[1, 2, 3] / [1, 0; 0, 1]
#! "array size mismatch" -1
div(1, [1 m, 0; 0, 1 m])
#! "must be a linear algebra matrix" 1
[1 m, 1; 1, 1] / [1, 0; 0, 1]
#! "must be a linear algebra matrix" 1
["a", 1] / [1, 0; 0, 1]
#! "must be a linear algebra matrix" 1
div([1 m, 1 s], [1, 0; 0, 1])
#! "matrix unit mismatch" -1
div(1, [NaN, 1; 1, 1])
#! "floating point exception" 0
"a" / [1, 0; 0, 1]
#! "must be a scalar or a matrix" 1
# The inverse comes first.
"a" / [0, 0; 0, 0]
#! "singular matrix" -1
set strict_singularity_checking off
div(1, [1, 2; 2, 4])
#! "singularity" -1
set strict_singularity_checking on

div([1, 2, 3], [1, 2])
#! "array size mismatch" -1
[1, 2] / [1; 2]
#! "array size mismatch" -1
div("a", 2)
#! "must be a scalar or a matrix" 1
2 / "a"
#! "must be a scalar or a matrix" 2
"a" / "b"
#! "must be a scalar or a matrix" 2
div(2, sin)
#! "must be a scalar or a matrix" 2
[1, "a"] / 2
#! "must be a scalar or a matrix" 1
2 / [1, "a"]
#! "must be a scalar or a matrix" 2
[1, "a"] / [1, "b"]
#! "must be a scalar or a matrix" 2
[1, "a"] / [1, 2]
#! "must be a scalar or a matrix" 1
# A real numerator takes part with the imaginary part +0, alone as among elements.
complex(0, -0.0) / complex(2, 1)
#= 0
Im(complex([0; 1], [-0.0; 1]) / complex(2, 1))
#= [0; 0.2]
complex(3, -0.0) / complex(0, 2)
#= complex(0, -1.5)
complex(3, -0.0) / [2i; 3]
#= complex([0; 1], [-1.5; 0])
