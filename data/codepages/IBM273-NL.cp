# IBM273-NL: IBM273 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM273

id = 57617
name = IBM273-NL
based on = IBM273
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
