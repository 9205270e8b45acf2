// seed
1 "One"
2 "Two
lines"
3 "Open
4 "Recovered"
10 ""
