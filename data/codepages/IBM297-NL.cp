# IBM297-NL: IBM297 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM297

id = 57641
name = IBM297-NL
based on = IBM297
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
