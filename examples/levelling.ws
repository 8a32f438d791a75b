# A levelling network without a known height: seven differences were measured between five benchmarks, so heights are
# determined but for a common constant, and A has a rank of four. The generalised inverse gives the heights of least
# squares that have a mean of zero.

# Each row is a line of levels: from a benchmark (-1) to another one (1).
A := [
    -1,  1,  0,  0,  0;
     0, -1,  1,  0,  0;
     0,  0, -1,  1,  0;
     0,  0,  0, -1,  1;
     1,  0,  0,  0, -1;
    -1,  0,  1,  0,  0;
     0, -1,  0,  1,  0
]
d := [1.2346 m; 0.8122 m; -2.1057 m; 0.4410 m; -0.3838 m; 2.0451 m; -1.2919 m]

"Rank: one less than there are benchmarks"
rank(A)
"The generalised inverse, with singular values up to 1e-9 counted as zero"
set tol 1e-9
G := geninv(A)
G
"Heights about their mean"
h := G * d
h -> mm
"They have a mean of zero"
round(sigmasum(h) / 1e-9 m)
"Corrections of the lines"
A * h - d -> mm
"Standard deviation of a line: seven lines less the rank"
norm_f(A * h - d) / sqrt(rows(A) - rank(A)) -> mm

"Misclosure of the loop through all five"
sigmasum(submatrix(d, 0, 4, 0, 0)) -> mm

# With benchmark 0 at 112.500 m, the others follow.
"Heights above the datum"
h - h[0] + 112.5 m
