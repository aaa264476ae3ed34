# IBM1142-NL: IBM1142 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM1142

id = 58486
name = IBM1142-NL
based on = IBM1142
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
