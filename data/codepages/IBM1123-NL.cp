# IBM1123-NL: IBM1123 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1123

id = 58467
name = IBM1123-NL
based on = IBM1123
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
