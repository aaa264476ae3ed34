# IBM1140-NL: IBM1140 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1140

id = 58484
name = IBM1140-NL
based on = IBM1140
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
