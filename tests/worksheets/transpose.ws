# transpose(M), also written M': rows and columns exchanged, everything else kept.
transpose([1, 2, 3; 4, 5, 6])
#= [1, 4; 2, 5; 3, 6]
[1, 2, 3; 4, 5, 6]'
#= [1, 4; 2, 5; 3, 6]
[1; 2; 3]'
#= [1, 2, 3]
[1, 2, 3]'
#= [1; 2; 3]
[7]'
#= [7]
[]'
#= []
# Nothing is conjugated, and an imaginary array of zeros stays.
[1 + 2i, 3; 4, 5]'
#= [1 + 2i, 4; 3, 5]
complex([1, 2; 3, 4])'
#= complex([1, 3; 2, 4])
complex([1; 2])'
#= complex([1, 2])
# Units go with their elements.
([1, 2; 3, 4] * m)'
#= [1, 3; 2, 4] * m
[1 m, 2 s; 3 kg, 4 A]'
#= [1 m, 3 kg; 2 s, 4 A]
[1 m; 2 s]'
#= [1 m, 2 s]
# Texts and nested arrays go with their places; a nested array itself stays as it is.
["a", 1; [1, 2], 3]'
#= ["a", [1, 2]; 1, 3]
["a"; "b"]'
#= ["a", "b"]
["a", 2 m; 3 s, [4; 5]]''
#= ["a", 2 m; 3 s, [4; 5]]
# A row of a larger matrix, and the transpose of its transpose.
A := [1, 2, 3; 4, 5, 6; 7, 8, 9]
submatrix(A, 1, 1, 0, 2)'
#= [4; 5; 6]
submatrix(A, 1, 2, 1, 2)'
#= [5, 8; 6, 9]
submatrix(["a", "b"; "c", "d"], 0, 1, 1, 1)'
#= ["b", "d"]
A''
#= A
transpose(5)
#! "must be matrix" 1
transpose("text")
#! "must be matrix" 1
transpose(sin)
#! "must be matrix" 1
3'
#! "must be matrix" 1 ""
