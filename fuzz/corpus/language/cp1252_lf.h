5 "Français €"
6 "XXX and XXX"
7 "cut at the end