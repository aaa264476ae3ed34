# MS1251: Windows, Cyrillic
# origin: converter ibm-5347_P100-1998 of ICU 72.1, by vlx-import codepages
# compared with: CP1251 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections:
# - the C1 controls that ICU has in unassigned bytes are left out

id = 1251
name = MS1251
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
80: 0402 0403 201A 0453 201E 2026 2020 2021 20AC 2030 0409 2039 040A 040C 040B 040F
90: 0452 2018 2019 201C 201D 2022 2013 2014 ---- 2122 0459 203A 045A 045C 045B 045F
A0: 00A0 040E 045E 0408 00A4 0490 00A6 00A7 0401 00A9 0404 00AB 00AC 00AD 00AE 0407
B0: 00B0 00B1 0406 0456 0491 00B5 00B6 00B7 0451 2116 0454 00BB 0458 0405 0455 0457
C0: 0410..041F
D0: 0420..042F
E0: 0430..043F
F0: 0440..044F
