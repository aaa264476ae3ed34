# UTF-8: by rule, up to three bytes and U+FFFF. The library computes the characters; the object has
# their lengths, types, case and width.
# origin: ours
# licence: as the project

id = 57352
name = UTF-8
rule = utf8
family = ascii
max bytes = 3
substitution = 3F
lf = 0A
cr = 0D
lineEnd3 = 0A
lineEnd4 = 0A
