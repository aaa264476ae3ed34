# IBM1145-NL: IBM1145 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1145

id = 58489
name = IBM1145-NL
based on = IBM1145
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
