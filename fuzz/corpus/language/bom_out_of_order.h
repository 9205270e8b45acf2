20 "utf8 é"
10 "out of order"
30 "thirty"
