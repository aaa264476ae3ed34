/**
 * @file tsconst.h
 * The constants of the library: options, locale items, kinds and error codes, by the names that the
 * functions' descriptions use. Clean C11 and C++; it includes nothing.
 *
 * Values with the top bit set are whole values and never combined, unless their comment says so;
 * they carry a `u` suffix so that they keep their type in comparisons with `uint32_t`.
 */
#ifndef TSCONST_H
#define TSCONST_H

/* clang-format off */

/* Error codes: what TSGetError and the code pointers give. */

#define TS_ERR_NONE 0 /**< success */
#define TS_ERR_FAILED 1 /**< a file could not be opened or mapped, or a free failed; facade not started */
#define TS_ERR_ARGUMENT 2 /**< invalid option or argument */
#define TS_ERR_NO_CONTROL_FILE 10 /**< TSInit worked, but not from the control file */
#define TS_ERR_NO_OBJECTS 11 /**< object store not available, or a load failed in an unnamed way */
#define TS_ERR_MEMORY 20 /**< out of memory */
#define TS_ERR_FREE 21 /**< a free call failed */
#define TS_ERR_CODEPAGE 30 /**< invalid code page */
#define TS_ERR_LANGUAGE 31 /**< invalid language */
#define TS_ERR_NO_NATIVE 32 /**< no native equivalent */
#define TS_ERR_SORT 33 /**< invalid sort */
#define TS_ERR_TERRITORY 34 /**< invalid territory */
#define TS_ERR_ITEM 35 /**< invalid locale item */
#define TS_ERR_SEPARATOR 36 /**< a separator is no single byte in the new code page */
#define TS_ERR_NOT_FOUND 37 /**< object not found; a time text that does not match its pattern */
#define TS_ERR_BUFFER 40 /**< output buffer too small */
#define TS_ERR_BASE 50 /**< number base outside 0 and 2 to 36 */
#define TS_ERR_DIRECTIVE 51 /**< bad format directive */
#define TS_ERR_OUTPUT_FULL 52 /**< output full: a result of buffer conversion */
#define TS_ERR_PARTIAL_CHAR 53 /**< input ended inside a character: a result of buffer conversion */
#define TS_ERR_STREAM_DIRECTION 60 /**< stream of the wrong direction for the call */
#define TS_ERR_STREAM_CUT 61 /**< the data ended inside a character */
#define TS_ERR_STREAM_FLUSH 62 /**< a write failed during a flush */
#define TS_ERR_STREAM_READ 63 /**< a read failed */
#define TS_ERR_STREAM_COUNT 64 /**< a senseless count from the read, or a shift byte inside a character */
#define TS_ERR_STREAM_HELD 65 /**< the write was not done, and the bytes are held for later */
#define TS_ERR_NULL_CATALOG 70 /**< close of a null catalog */
#define TS_ERR_NO_CATALOG 71 /**< no catalog file found, or not a good catalog */
#define TS_ERR_NO_MESSAGE 72 /**< message not obtained */
#define TS_ERR_FILE_NOT_FOUND 1000 /**< file not found */
#define TS_ERR_FILE_ACCESS 1001 /**< access denied */
#define TS_ERR_FILE_MODE 1002 /**< operation not allowed in the file's mode */
#define TS_ERR_FILE_READ 1003 /**< read, map or seek failure, or a path that is too long */
#define TS_ERR_FILE_UNMAP 1005 /**< unmap failure */
#define TS_ERR_HEADER 2000 /**< the header of a control or object file is corrupted */

/* Options that more than one family takes. */

#define TS_OPT_OBJECT_VALUE 0x0001u /**< take the value of the territory object, not the record's */
#define TS_OPT_TERMINATE 0x0008u /**< write a terminator, room reserved */
#define TS_OPT_MAP_DIGITS 0x0010u /**< parsers: read every digit as its ASCII digit */
#define TS_OPT_MONETARY 0x0020u /**< parsers: monetary separators and signs */
#define TS_OPT_INTERNATIONAL 0x0040u /**< currency: the international symbol and digits */
#define TS_OPT_UNSIGNED 0x0080u /**< long members: unsigned 32-bit */
#define TS_OPT_CHAR_COUNT 0x4000u /**< lengths and results count characters */
#define TS_OPT_STRIP_BLANKS 0x00200000u /**< comparison: disregard trailing blanks */
#define TS_OPT_LAST_MATCH 0x80000020u /**< character search: the last match */
#define TS_OPT_IGNORE_CASE 0x80000040u /**< comparison, search, keys */
#define TS_OPT_IGNORE_WIDTH 0x80000041u /**< comparison, search, keys */
#define TS_TRUNC_STRIP_BLANKS 0x00800000u /**< truncation: take trailing blanks away, even if the string fits */

/* Start of the library and locale names. */

#define TS_STRICT_OBJECTS 0x80000001u /**< TSInit: a failed load gives no object */
#define TS_LOCALE_USER 0x0002u /**< the user's locale, whatever the name */
#define TS_LOCALE_FALLBACK 0x0004u /**< a part that is not listed becomes the default */
#define TS_DEFAULT_LANGUAGE "English" /**< the language of an empty name */

/* Types of locale objects, and the flag bits of an object. */

#define TS_OBJ_LANGUAGE 0
#define TS_OBJ_TERRITORY 1
#define TS_OBJ_CODEPAGE 2
#define TS_OBJ_SORT 3
#define TS_OBJ_BUILTIN 0x01u /**< sections are static data */
#define TS_OBJ_SECTION1_HEAP 0x02u /**< section 1 is a heap block */
#define TS_OBJ_SECTION2_HEAP 0x04u /**< section 2 is a heap block */
#define TS_OBJ_SECTION3_HEAP 0x08u /**< section 3 is a heap block */
#define TS_OBJ_SECTION4_HEAP 0x10u /**< section 4 is a heap block */

/* File modes and seek origins. */

#define TS_FILE_READ 0
#define TS_FILE_WRITE 1
#define TS_FILE_UPDATE 2
#define TS_SEEK_SET 10
#define TS_SEEK_CUR 11
#define TS_SEEK_END 12

/* Kinds of item text. */

#define TS_TEXT_UNICODE 1
#define TS_TEXT_CODEPAGE 2
#define TS_TEXT_ASCII 3

/* Kinds of character properties. */

#define TS_CT_CLASS 0x80000010u
#define TS_CT_DIRECTION 0x80000011u
#define TS_CT_FORM 0x80000012u

/* Line ends. */

#define TS_EOL_LF 0x0100u
#define TS_EOL_CRLF 0x0200u
#define TS_EOL_3 0x0400u /**< third line end; U+2028 */
#define TS_EOL_4 0x0800u /**< fourth line end; U+2029 */
#define TS_EOL_PUT_DEFAULT 0x1000u /**< writing only: as TS_EOL_CRLF */
#define TS_EOL_STRIP 0x8000u /**< reading: take the line end away */
#define TS_EOL_NONE 0x80000030u /**< type: no line end found */
#define TS_EOL_BAD_OPTIONS 0x80000031u /**< type: the options were refused */

/* String mapping. TS_MAP_SIMPLE is a bit and combines with TS_MAP_LOWER and TS_MAP_UPPER. */

#define TS_MAP_DIGITS 0x00000010u /**< every digit to its ASCII digit */
#define TS_MAP_FULL_WIDTH 0x80000021u
#define TS_MAP_HALF_WIDTH 0x80000022u
#define TS_MAP_COPY 0x80000023u
#define TS_MAP_LOWER 0x80000024u
#define TS_MAP_UPPER 0x80000025u
#define TS_MAP_SIMPLE 0x00002000u /**< the language's pairs are ignored */

/* Streams and message catalogs. */

#define TS_STREAM_READ 0x80000050u
#define TS_STREAM_WRITE 0x80000051u
#define TS_CATALOG_SEARCH_ONCE 0x80000060u /**< do not try again with the default locale */
#define TS_CATALOG_PRELOAD 0x80000061u /**< load index and texts now; searches once */

/* Locale items: every value of a locale by number, the same for queries and updates. */

#define TS_LI_LANGUAGE_ID 1
#define TS_LI_LANGUAGE_OBJECT 2
#define TS_LI_LANGUAGE_CODE 3
#define TS_LI_LANGUAGE_NAME 4
#define TS_LI_TERRITORY_ID 5
#define TS_LI_TERRITORY_OBJECT 6
#define TS_LI_TERRITORY_CODE 7
#define TS_LI_TERRITORY_NAME 8
#define TS_LI_CODEPAGE_ID 9
#define TS_LI_CODEPAGE_OBJECT 10
#define TS_LI_SORT_ID 11
#define TS_LI_SORT_OBJECT 12
#define TS_LI_DEFAULT_TERRITORY_OBJECT 13
#define TS_LI_DEFAULT_CODEPAGE_OBJECT 14
#define TS_LI_DEFAULT_SORT_OBJECT 15
#define TS_LI_DAY_1 16
#define TS_LI_DAY_2 17
#define TS_LI_DAY_3 18
#define TS_LI_DAY_4 19
#define TS_LI_DAY_5 20
#define TS_LI_DAY_6 21
#define TS_LI_DAY_7 22
#define TS_LI_ABDAY_1 23
#define TS_LI_ABDAY_2 24
#define TS_LI_ABDAY_3 25
#define TS_LI_ABDAY_4 26
#define TS_LI_ABDAY_5 27
#define TS_LI_ABDAY_6 28
#define TS_LI_ABDAY_7 29
#define TS_LI_MONTH_1 30
#define TS_LI_MONTH_2 31
#define TS_LI_MONTH_3 32
#define TS_LI_MONTH_4 33
#define TS_LI_MONTH_5 34
#define TS_LI_MONTH_6 35
#define TS_LI_MONTH_7 36
#define TS_LI_MONTH_8 37
#define TS_LI_MONTH_9 38
#define TS_LI_MONTH_10 39
#define TS_LI_MONTH_11 40
#define TS_LI_MONTH_12 41
#define TS_LI_MONTH_13 42
#define TS_LI_ABMONTH_1 43
#define TS_LI_ABMONTH_2 44
#define TS_LI_ABMONTH_3 45
#define TS_LI_ABMONTH_4 46
#define TS_LI_ABMONTH_5 47
#define TS_LI_ABMONTH_6 48
#define TS_LI_ABMONTH_7 49
#define TS_LI_ABMONTH_8 50
#define TS_LI_ABMONTH_9 51
#define TS_LI_ABMONTH_10 52
#define TS_LI_ABMONTH_11 53
#define TS_LI_ABMONTH_12 54
#define TS_LI_ABMONTH_13 55
#define TS_LI_AM 56
#define TS_LI_PM 57
#define TS_LI_TERRITORY_FLAG0 58
#define TS_LI_DECIMAL_POINT 59
#define TS_LI_THOUSANDS_SEP 60
#define TS_LI_LIST_SEPARATOR 61
#define TS_LI_GROUPING 62
#define TS_LI_FRAC_DIGITS 63
#define TS_LI_CURRENCY_SYMBOL 64
#define TS_LI_INT_CURRENCY_SYMBOL 65
#define TS_LI_MON_DECIMAL_POINT 66
#define TS_LI_MON_THOUSANDS_SEP 67
#define TS_LI_MON_GROUPING 68
#define TS_LI_MON_FRAC_DIGITS 69
#define TS_LI_INT_FRAC_DIGITS 70
#define TS_LI_POSITIVE_SIGN 71
#define TS_LI_NEGATIVE_SIGN 72
#define TS_LI_P_CS_PRECEDES 73
#define TS_LI_P_SEP_BY_SPACE 74
#define TS_LI_N_CS_PRECEDES 75
#define TS_LI_N_SEP_BY_SPACE 76
#define TS_LI_P_SIGN_POSN 77
#define TS_LI_N_SIGN_POSN 78
#define TS_LI_TIME_FORMAT 79
#define TS_LI_DATE_FORMAT 80
#define TS_LI_LONG_DATE_FORMAT 81
#define TS_LI_TERRITORY_FLAG5 82
#define TS_LI_TERRITORY_FLAG6 83
#define TS_LI_TERRITORY_WORD9 84
#define TS_LI_MAX_CHAR_SIZE 85
#define TS_LI_ASCII_BASED 86
#define TS_LI_SHIFT_SENSITIVE 87
#define TS_LI_LOCALE_NAME 88

/* The facade. */

#define NLS1_THREAD 0x40000000u /**< set the thread's locale */
#define NLS1_PROCESS 0x80000000u /**< set the process's default locale */
#define NLS1_OPT_BLANKS_MAY_GO 0x00800000u /**< losing only trailing blanks is no truncation */
#define NLS1_OPT_PAD_BLANKS 0x00400000u /**< fill unused output with the target's blank */

/* clang-format on */

#endif
