# write_csv(M, file): M in SI numbers that read back to the same bits; gives the number of rows.
file := "/tmp/bailuxsko-write-csv-test.csv"
A := [0.1, 1/3, -0.0; 1e300, 5e-324, 12345678901234567; NaN, inf, -inf]
write_csv(A, file)
#= 3
read_csv(file)
#= [0.1, 1/3, -0.0; 1e300, 5e-324, 12345678901234567; NaN, inf, -inf]

B := ["a, b", "say \"hi\""; "two\nlines", ""; 1, "x"]
write_csv(B, file)
#= 3
read_csv(file)
#= ["a, b", "say \"hi\""; "two\nlines", ""; 1, "x"]

# Units are left out.
write_csv([1 km, 2 s], file)
#= 1
read_csv(file)
#= [1000, 2]

write_csv([], file)
#= 0
read_csv(file)
#= []

write_csv(5, file)
#! "must be matrix" 1 write_csv
write_csv([1, 2i], file)
#! "must be real matrix" 1 write_csv
write_csv(complex([1, 2]), file)
#! "must be real matrix" 1 write_csv
write_csv([1, [2]], file)
#! "may not be nested" 1 write_csv
write_csv([1, 2], 5)
#! "must be string" 2 write_csv
write_csv([1, 2], "/no such folder/x.csv")
#! "cannot write file: /no such folder/x.csv" 2 write_csv
write_csv([1, 2])
#! "wrong number of arguments" -1 write_csv
# The disk is full: what was not written is noticed.
write_csv([1, 2], "/dev/full")
#! "cannot write file: /dev/full" 2 write_csv
