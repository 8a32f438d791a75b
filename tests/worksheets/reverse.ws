# reverse(M): the rows in reverse order.

reverse([1; 2; 3])
#= [3; 2; 1]
reverse([1, 2, 3])
#= [1, 2, 3]
reverse([1, 2; 3, 4; 5, 6])
#= [5, 6; 3, 4; 1, 2]
reverse([1 m; 2 s; 3])
#= [3; 2 s; 1 m]
reverse([1 m, 2; 3 s, 4])
#= [3 s, 4; 1 m, 2]
reverse([1; 2] * m)
#= [2 m; 1 m]
reverse(["a"; "b"; "c"])
#= ["c"; "b"; "a"]
reverse([[1, 2], "x"; 3, 4])
#= [3, 4; [1, 2], "x"]
reverse([1i; 2])
#= [2; 1i]
# The imaginary array of the source stays.
reverse(complex([1; 2]))
#= complex([2; 1])
B := [1, "a", 3; 4, 5, 6; 7, 8, "c"]
reverse(submatrix(B, 0, 1, 1, 2))
#= [5, 6; "a", 3]
reverse([])
#= []
reverse(reverse([1, 2; 3, 4]))
#= [1, 2; 3, 4]

reverse(5)
#! "must be matrix" 1
reverse("a")
#! "must be matrix" 1
