# set NAME VALUE
A := [10, 20; 30, 40]
A[0, 0]
#= 10
set origin 1
#{"kind":"setting","name":"origin"}
A[1, 1]
#= 10
A[0, 0]
#! "index out of bounds" -1 "" column 2
last([5; 6; 7])
#= 3
set origin -2
A[-2, -1]
#= 20
set origin 2147483647
A[2147483648, 2147483647]
#= 30
set origin -2147483648
last([5; 6])
#= -2147483647
set origin 0
set origin 1e0
A[1, 2]
#= 20
set origin 0   # a comment may follow

set origin 2147483648
#! syntax error column 12
set origin 0.5
#! syntax error column 12
set origin inf
#! syntax error column 12
set origin
#! syntax error column 11
set origin x
#! syntax error column 12
set origin 1 2
#! syntax error column 12
set origin "1"
#! syntax error column 12
# A setting that failed changes nothing.
A[0, 0]
#= 10

set tol 1e-6
set tol inf
set tol NaN
set tol -1
set tol -inf
set tol 0
set tol 1e-3 m
#! syntax error column 9
set tol 2i
#! syntax error column 9
set strict_singularity_checking off
#{"kind":"setting","name":"strict_singularity_checking"}
set strict_singularity_checking on
set strict_singularity_checking 1
#! syntax error column 33
set strict_singularity_checking ON
#! syntax error column 33

[0, 1] / 0
#! "divide by zero" 2 "" column 8
set zero_over_zero_is_zero on
[0, 0] / 0
#= [0, 0]
set zero_over_zero_is_zero off
[0, 0] / 0
#! "divide by zero" 2

set nothing 1
#! syntax error column 5

# `set` is an ordinary name unless a name follows it.
set := 5
set
#= 5
set + 1
#= 6
set(x) := 2 * x
set(4)
#= 8
set origin 1
A[1, 1]
#= 10
