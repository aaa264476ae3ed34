# IBM280-NL: IBM280 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM280

id = 57624
name = IBM280-NL
based on = IBM280
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
