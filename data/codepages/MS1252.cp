# MS1252: Windows, Western European
# origin: converter ibm-5348_P100-1997 of ICU 72.1, by vlx-import codepages
# compared with: CP1252 of glibc iconv 2.36
# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md
# corrections:
# - the C1 controls that ICU has in unassigned bytes are left out

id = 1252
name = MS1252
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
80: 20AC ---- 201A 0192 201E 2026 2020 2021 02C6 2030 0160 2039 0152 ---- 017D
90: ---- 2018 2019 201C 201D 2022 2013 2014 02DC 2122 0161 203A 0153 ---- 017E 0178
A0: 00A0..00AF
B0: 00B0..00BF
C0: 00C0..00CF
D0: 00D0..00DF
E0: 00E0..00EF
F0: 00F0..00FF
