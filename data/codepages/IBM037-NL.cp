# IBM037-NL: IBM037 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM037

id = 57381
name = IBM037-NL
based on = IBM037
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
