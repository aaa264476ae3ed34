# ISO8859-5: Cyrillic
# origin: converter ibm-915_P100-1995 of ICU 72.1, by vlx-import codepages
# compared with: ISO-8859-5 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections: none

id = 915
name = ISO8859-5
family = ascii
max bytes = 1
substitution = 3F
lf = 0A
cr = 0D
lineEnd3 = 0A
lineEnd4 = 0A

[decode]
00: 0000..000F
10: 0010..001F
20: 0020..002F
30: 0030..003F
40: 0040..004F
50: 0050..005F
60: 0060..006F
70: 0070..007F
80: 0080..008F
90: 0090..009F
A0: 00A0 0401 0402 0403 0404 0405 0406 0407 0408 0409 040A 040B 040C 00AD 040E 040F
B0: 0410..041F
C0: 0420..042F
D0: 0430..043F
E0: 0440..044F
F0: 2116 0451 0452 0453 0454 0455 0456 0457 0458 0459 045A 045B 045C 00A7 045E 045F
