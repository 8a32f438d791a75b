# crossprod(a, b): the cross product of two columns of 3 elements.

crossprod([1; 0; 0], [0; 1; 0])
#= [0; 0; 1]
crossprod([1; 2; 3], [4; 5; 6])
#= [-3; 6; -3]
crossprod([1i; 0; 0], [0; 1; 0])
#= [0; 0; 1i]
crossprod([1i; 0; 0], [0; 1i; 0])
#= [0; 0; -1]
crossprod(complex([1; 0; 0]), [0; 1; 0])
#= [0; 0; 1]
crossprod([1; 0; 0] * m, [0; 2; 0] * N)
#= [0 J; 0 J; 2 J]
# A position that is NaN in both parts is a real NaN.
crossprod(complex([NaN; NaN; NaN], [NaN; NaN; NaN]), [1; 2; 4])
#= [NaN; NaN; NaN]
crossprod(complex([NaN; 0; 0], [NaN; 0; 0]), [0; 1i; 1])
#= complex([0; NaN; NaN])
crossprod([1e200; 1; 1], [1; 1e200; 1])
#! "floating point exception" 0

crossprod([1, 2, 3], [4; 5; 6])
#! "must be a 3 element vector" 1
crossprod([1; 2; 3], [4; 5])
#! "must be a 3 element vector" 2
crossprod(1, 2)
#! "must be a 3 element vector" 1
crossprod([1 m; 2; 3], "a")
#! "must be a 3 element vector" 2
crossprod([1 m; 2; 3], [4; 5; 6])
#! "must be of uniform dimension" 1
crossprod([1; 2; 3], [4; "a"; 6])
#! "must be of uniform dimension" 2
