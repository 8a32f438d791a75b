# Functions of the worksheet: the body looks names up when it is called.
f(x) := x + c
f(1)
#! "undefined name: c" -1 "" column 1
c := 10
f(1)
#= 11
c := 20
f(1)
#= 21
# Parameters come before the worksheet's names; they do not leave the call.
g(c) := f(0) + c
g(1)
#= 21
c
#= 20
m(kg) := kg + 1
m(2)
#= 3
k() := 42
k()
#= 42
k
#{"kind":"function","name":"k","params":0}

f
#{"kind":"function","name":"f","params":1}
add(a, b) := a + b
add
#{"kind":"function","name":"add","params":2}
plus := add
plus(1, 2)
#= 3
plus
#{"kind":"function","name":"add","params":2}
apply(h, x) := h(x)
apply(f, 1)
#= 21
apply(sqrt, 9)
#= 3
s := sin
s(0)
#= 0
s
#{"kind":"function","name":"sin","params":1}
sin == s
#= 1
sin == cos
#= 0

fib(n) := if(n < 2, n, fib(n - 1) + fib(n - 2))
fib(15)
#= 610
even(n) := if(n == 0, 1, odd(n - 1))
odd(n) := if(n == 0, 0, even(n - 1))
even(101)
#= 0

f()
#! "wrong number of arguments" -1 "" column 1
1 + f(1, 2)
#! "wrong number of arguments" -1 "" column 5
apply(add, 1)
#! "wrong number of arguments" -1 "" column 1
apply(3, 1)
#! "not a function: h" -1 "" column 1
sqrt(f)
#! "must be a scalar or a matrix" 1 sqrt column 1
f + 1
#! "must be a scalar or a matrix" 1 ""

# A recursion that runs away ends in an error.
away(n) := away(n + 1) + 1
away(1)
#! "nesting too deep" -1 "" column 1
deep(n) := [deep(n)]
2 * deep(1)
#! "nesting too deep" -1 "" column 5
1 + 1
#= 2
