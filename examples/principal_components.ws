# Principal components of sixteen years of the American economy, 1947 to 1962: the six variables that J. W. Longley
# (An appraisal of least squares programs for the electronic computer from the point of view of the user, Journal of the
# American Statistical Association 62, 1967) explained employment by. They rise and fall together, so few components hold
# nearly all that the six say.

# price deflator (1954 is 100), national product, unemployed, armed forces (thousands), population (thousands), year
X := [
     83.0, 234289, 2356, 1590, 107608, 1947;
     88.5, 259426, 2325, 1456, 108632, 1948;
     88.2, 258054, 3682, 1616, 109773, 1949;
     89.5, 284599, 3351, 1650, 110929, 1950;
     96.2, 328975, 2099, 3099, 112075, 1951;
     98.1, 346999, 1932, 3594, 113270, 1952;
     99.0, 365385, 1870, 3547, 115094, 1953;
    100.0, 363112, 3578, 3350, 116219, 1954;
    101.2, 397469, 2904, 3048, 117388, 1955;
    104.6, 419180, 2822, 2857, 118734, 1956;
    108.4, 442769, 2936, 2798, 120445, 1957;
    110.8, 444546, 4681, 2637, 121950, 1958;
    112.6, 482704, 3813, 2552, 123366, 1959;
    114.2, 502601, 3931, 2514, 125368, 1960;
    115.7, 518173, 4806, 2572, 127852, 1961;
    116.9, 554894, 4007, 2827, 130081, 1962
]
n := rows(X)

# Each variable as its distance from the mean, in standard deviations: then none counts more for its unit.
variable(k) := submatrix(X, 0, n - 1, k, k)
mean(v) := sigmasum(v) / rows(v)
deviation(v) := norm_f(v - mean(v)) / sqrt(rows(v) - 1)
standard(i, k) := (X[i, k] - mean(variable(k))) / deviation(variable(k))
Z := matrix(n, cols(X), standard)

# Z = U * diag(w) * V': the columns of V are the components, in the order of what they explain. A component may be turned
# round; here the deflator has a positive part in each.
UV := svd(Z)
V := submatrix(UV, n, n + cols(Z) - 1, 0, cols(Z) - 1)
turned(i, k) := if(V[0, k] < 0, -V[i, k], V[i, k])
loading := matrix(cols(Z), cols(Z), turned)
score := Z * loading

"What each variable contributes to each component"
loading
"Variance of each component"
variances(k, zero) := (score' * score)[k, k] / (n - 1)
variance := matrix(cols(Z), 1, variances)
variance
"Share that the first two hold"
(variance[0] + variance[1]) / sigmasum(variance)
"The years in the plane of the first two"
augment(variable(5), submatrix(score, 0, n - 1, 0, 1))
"How far from dependent the variables are: the condition of Z"
sqrt(variance[0] / variance[5])
