# MS1253: Windows, Greek
# origin: converter ibm-5349_P100-1998 of ICU 72.1, by vlx-import codepages
# compared with: CP1253 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections:
# - the C1 controls that ICU has in unassigned bytes are left out
# - AA is unassigned, as in all other sources

id = 1253
name = MS1253
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
80: 20AC ---- 201A 0192 201E 2026 2020 2021 ---- 2030 ---- 2039
90: ---- 2018 2019 201C 201D 2022 2013 2014 ---- 2122 ---- 203A
A0: 00A0 0385 0386 00A3 00A4 00A5 00A6 00A7 00A8 00A9 ---- 00AB 00AC 00AD 00AE 2015
B0: 00B0 00B1 00B2 00B3 0384 00B5 00B6 00B7 0388 0389 038A 00BB 038C 00BD 038E 038F
C0: 0390..039F
D0: 03A0 03A1 ---- 03A3 03A4 03A5 03A6 03A7 03A8 03A9 03AA 03AB 03AC 03AD 03AE 03AF
E0: 03B0..03BF
F0: 03C0 03C1 03C2 03C3 03C4 03C5 03C6 03C7 03C8 03C9 03CA 03CB 03CC 03CD 03CE
