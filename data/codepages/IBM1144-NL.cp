# IBM1144-NL: IBM1144 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1144

id = 58488
name = IBM1144-NL
based on = IBM1144
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
