# A price list in texts and numbers: search, filter, order, add up.

file := read_csv("prices.csv")
list := submatrix(file, 1, rows(file) - 1, 0, cols(file) - 1)
column(j) := submatrix(list, 0, rows(list) - 1, j, j)
articles := column(0)
groups := column(1)
prices := column(3)
row(i, j) := i
index := matrix(rows(list), 1, row)

"One article: its price, and what it is sold by"
vlookup("nut M12", list, 3)
vlookup("nut M12", list, 2)
"Articles that have no price yet"
lookup("on request", prices, articles)

# A condition on numbers passes over texts.
"Articles of 5 and more, and from 1.50 to 2"
lookup(5, prices, articles, "geq")
lookup([1.5; 2], prices, articles, "range")
"The cheapest"
numbers := lookup(0, prices, prices, "geq")
lookup(min(numbers), prices, articles)

# Filters follow one another: rows with a price, and of these the rows of a group.
priced := match(0, prices, "geq")
in_group(i, z) := groups[i] == z
"Bolts with a price, the dearest first"
hits := lookup("bolts", priced, priced, in_group)
picked(k, j) := list[hits[k], j]
reverse(csort(matrix(rows(hits), cols(list), picked), 3))

"Group by group: articles, articles with a price, the lowest and the highest price"
first_of_group(i, z) := match(groups[i], groups)[0] == i
names := lookup(0, index, groups, first_of_group)
names
prices_of(k) := lookup(names[k], priced, numbers, in_group)
extreme(p, j) := if(j == 1, rows(p), if(j == 2, min(p), max(p)))
summary(k, j) := if(j == 0, rows(match(names[k], groups)), extreme(prices_of(k), j))
matrix(rows(names), 4, summary)

# Sorting all of it by the article: texts in the order of a dictionary, whatever their case.
"The first four by name"
submatrix(csort(list, 0), 0, 3, 0, 3)

# An order: articles and how many. A tenth goes off where the list's quantity is reached.
order := ["hex bolt M12x80", 60; "nut M12", 120; "flat bar 60x8, 6 m", 18; "plate 4 mm, cut", 75.5; "lock nut M12", 120]
price(k) := vlookup(order[k, 0], list, 3)[0]
discount_from(k) := vlookup(order[k, 0], list, 4)[0]
amount(k, j) := order[k, 1] * price(k) * if(order[k, 1] >= discount_from(k), 0.9, 1)
amounts := matrix(rows(order), 1, amount)
"The order with its amounts, and the total"
augment(order, amounts)
sigmasum(amounts)
