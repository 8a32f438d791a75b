# if(condition, a, b): a where the condition is anything but 0; only the chosen one is evaluated.
if(1, "yes", "no")
#= "yes"
if(0, "yes", "no")
#= "no"
if(-0.0, "yes", "no")
#= "no"
if(NaN, "yes", "no")
#= "yes"
if(2 > 1, 5 m, 6 s)
#= 5 m
if(1, 2, nobody)
#= 2
if(0, nobody, 2)
#= 2
if(1, nobody, 2)
#! "undefined name: nobody" -1 "" column 7

fac(n) := if(n <= 1, 1, n * fac(n - 1))
fac(10)
#= 3628800

if("1", 2, 3)
#! "must be real" 1 if column 1
if(1i, 2, 3)
#! "must be real" 1 if
if(1 m, 2, 3)
#! "must be real" 1 if
if([1], 2, 3)
#! "must be real" 1 if
if(1, 2)
#! "wrong number of arguments" -1 if
# The condition is not evaluated where the number of arguments is wrong.
if(nobody, 2)
#! "wrong number of arguments" -1 if

# As a value it is a function like others, and gets all its arguments evaluated.
choose := if
choose(1, 2, 3)
#= 2
choose(1, 2, nobody)
#! "undefined name: nobody" -1
choose("1", 2, 3)
#! "must be real" 1 if
