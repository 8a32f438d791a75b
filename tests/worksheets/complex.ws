# complex(A): A with an imaginary array; complex(A, B): real parts A, imaginary parts B.
complex([1, 2])
#{"kind":"matrix","rows":1,"cols":2,"complex":true,"unit":"","data":[[[1.0,0.0],[2.0,0.0]]]}
complex([1 + 2i, 3])
#{"kind":"matrix","rows":1,"cols":2,"complex":true,"unit":"","data":[[[1.0,2.0],[3.0,0.0]]]}
complex([1, 2], [3, 4])
#= [1 + 3i, 2 + 4i]
complex(1, 2)
#= 1 + 2i
complex(3)
#= 3
complex(3 m, 4 m)
#= 3 m + 4i * m
# A matrix without elements has the array too.
complex([])
#{"kind":"matrix","rows":0,"cols":0,"complex":true,"unit":"","data":[]}
complex([], 3)
#{"kind":"matrix","rows":0,"cols":0,"complex":true,"unit":"","data":[]}
Re(complex([]))
#{"kind":"matrix","rows":0,"cols":0,"complex":false,"unit":"","data":[]}
complex([]) + 1 m
#= []
# A number meets every element.
complex([1, 2], 3)
#= [1 + 3i, 2 + 3i]
complex(1, [2; 3])
#= [1 + 2i; 1 + 3i]
# The array is there also when all of it is zero.
complex([1, 2], 0)
#{"kind":"matrix","rows":1,"cols":2,"complex":true,"unit":"","data":[[[1.0,0.0],[2.0,0.0]]]}
# Parts are taken as they are: infinity times i is not multiplied out.
complex(1, inf)
#{"kind":"number","re":1.0,"im":"inf","unit":""}
complex([[1, 2], 3])
#{"kind":"matrix","rows":1,"cols":2,"complex":true,"unit":"","data":[[{"kind":"matrix","rows":1,"cols":2,"complex":true,"unit":"","data":[[[1.0,0.0],[2.0,0.0]]]},[3.0,0.0]]]}

complex([1, 2], [3 m, 4 m])
#! "unit mismatch" 2 complex
complex(1 m, 0)
#! "unit mismatch" 2 complex
complex([1, 2], [3; 4])
#! "array size mismatch" -1 complex
complex(1i, 2)
#! "must be real" 1 complex
complex(1, [2i, 3])
#! "must be real" 2 complex
complex("a")
#! "must be a scalar or a matrix" 1 complex
complex([1, "a"], 1)
#! "must be a scalar or a matrix" 1 complex
complex(1, "a")
#! "must be a scalar or a matrix" 2 complex
complex(1, 2, 3)
#! "wrong number of arguments" -1 complex
