# IBM285-NL: IBM285 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM285

id = 57629
name = IBM285-NL
based on = IBM285
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
