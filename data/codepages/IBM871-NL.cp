# IBM871-NL: IBM871 with line feed and next line exchanged, for files of systems that
# end a line by the next line character
# origin and licence: those of IBM871

id = 58215
name = IBM871-NL
based on = IBM871
lf = 15
lineEnd3 = 25
lineEnd4 = 15

[decode]
15: 000A
25: 0085
