# abs_f(x): the magnitude of a number and of nothing else.

abs_f(-3 m)
#= 3 m
abs_f(3 + 4i)
#= 5
abs_f(-5i)
#= 5
abs_f([3; 4])
#! "must be scalar" 1
abs_f("a")
#! "must be scalar" 1
