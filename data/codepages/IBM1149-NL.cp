# IBM1149-NL: IBM1149 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1149

id = 58493
name = IBM1149-NL
based on = IBM1149
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
