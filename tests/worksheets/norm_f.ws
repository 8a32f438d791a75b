# norm_f(v): the length of a column and of nothing else.

norm_f([3; 4])
#= 5
norm_f([-2] * m)
#= 2 m
norm_f([1i; 2; 2])
#= 3
norm_f([1e200; 0])
#= inf
norm_f([1, 2])
#! "must be vector" 1
norm_f([1, 2; 3, 4])
#! "must be vector" 1
norm_f([])
#! "must be vector" 1
norm_f(3)
#! "must be vector" 1
norm_f([1 m; 2 s])
#! "must be scalar matrix" 1
norm_f([1; "a"])
#! "must be scalar matrix" 1
