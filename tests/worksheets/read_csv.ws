# read_csv(file): the cells of a CSV file.
read_csv("data/points.csv")
#= ["x", "y"; 0, 0; 1.5, 2]
# Numbers with sign, fraction, exponent, blanks and quotes; what is almost a number is a text.
read_csv("data/numbers.csv")
#= [1, -2, 3, 0.5; 5, 1.5e-3, 1e5, -0.0; NaN, inf, -inf, 7; "1e", "nan", "+inf", "0x1F"; "1 2", "--1", "", "."]
# RFC 4180: quoted commas, line ends and quotes.
read_csv("data/quoted.csv")
#= ["a, b", "say \"hi\"", "two\nlines"; "", 8, "x"]
# Short rows are filled with empty texts; a blank line is a row.
read_csv("data/ragged.csv")
#= [1, "", ""; 2, 3, 4; "", "", ""; 5, 6, ""]
read_csv("data/crlf.csv")
#= [1, 2; 3, "x"]
read_csv("data/empty.csv")
#= []
# Numbers that no double holds, and the smallest.
read_csv("data/extremes.csv")
#= [inf, -inf, 0, 4.9406564584124654e-324]

read_csv("data/missing.csv")
#! "cannot read file: data/missing.csv" 1 read_csv
read_csv("data")
#! "cannot read file: data" 1 read_csv
read_csv("data/latin1.csv")
#! "cannot read file: data/latin1.csv" 1 read_csv
read_csv("/dev/zero")
#! "cannot read file: /dev/zero" 1 read_csv
read_csv(5)
#! "must be string" 1 read_csv
read_csv()
#! "wrong number of arguments" -1 read_csv
