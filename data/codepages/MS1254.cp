# MS1254: Windows, Turkish
# origin: converter ibm-5350_P100-1998 of ICU 72.1, by vlx-import codepages
# compared with: CP1254 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections:
# - the C1 controls that ICU has in unassigned bytes are left out

id = 1254
name = MS1254
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
80: 20AC ---- 201A 0192 201E 2026 2020 2021 02C6 2030 0160 2039 0152
90: ---- 2018 2019 201C 201D 2022 2013 2014 02DC 2122 0161 203A 0153 ---- ---- 0178
A0: 00A0..00AF
B0: 00B0..00BF
C0: 00C0..00CF
D0: 011E 00D1 00D2 00D3 00D4 00D5 00D6 00D7 00D8 00D9 00DA 00DB 00DC 0130 015E 00DF
E0: 00E0..00EF
F0: 011F 00F1 00F2 00F3 00F4 00F5 00F6 00F7 00F8 00F9 00FA 00FB 00FC 0131 015F 00FF
