/**
 * @file tessera.h
 * The Tessera library: one locale model for text in any code page, the same on every host.
 *
 * A program starts the library with TSInit(), makes locale handles with TSGetLocale() or sets a
 * default locale with TSSetLocale(), and passes a handle, or null for the default locale, to every
 * other function. Every function clears or sets the error code of the locale it works on, which
 * TSGetError() reads.
 *
 * Text comes in up to four forms, and a family of functions has a member for each:
 *
 * | Member | Text form |
 * |---|---|
 * | none | bytes in the locale's code page |
 * | `Ex` | the same with shift states: 0 single-byte, 1 multi-byte |
 * | `U` | arrays of 16-bit Unicode values |
 * | `W` | arrays of 32-bit packed values: a character's bytes, the first one most significant |
 *
 * Pointers to text are not tested. Sizes count bytes, 16-bit values or 32-bit words, and a negative
 * length means up to the terminator, unless a function says otherwise.
 */
#ifndef TESSERA_H
#define TESSERA_H

#include <stdint.h>

#include "tsconst.h"

#if !defined(_WIN32)
#define TS_API __attribute__((visibility("default")))
#elif defined(VLX_STATIC)
#define TS_API
#else
#define TS_API __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** One 16-bit Unicode value; there is no surrogate handling. */
typedef uint16_t TSChar16;

/** One packed character value: its bytes, the first one most significant; never Unicode. */
typedef uint32_t TSChar32;

/** An opaque word that is handed back to the caller's functions; wide enough for a pointer. */
typedef uintptr_t TSContext;

/** A locale handle: four objects of the locale directory and a private copy of their values. */
typedef struct TSLocale TSLocale;

/** A conversion of text that comes in slices. */
typedef struct TSConversion TSConversion;

/** An open message catalog. */
typedef struct TSCatalog TSCatalog;

/** Characters over a caller's read or write function. */
typedef struct TSStream TSStream;

/** Gives `bytes` bytes of memory, or null. */
typedef void* (*TSAllocate)(TSContext context, uint32_t bytes);

/** Takes memory back; non-zero is success. */
typedef int32_t (*TSFree)(TSContext context, void* memory);

/**
 * Reads or writes up to `count` bytes for a stream and returns how many it did. A reader returns -1
 * at the end of the data, another negative value for a failure; a writer returns a negative value
 * for a failure. 0 from a writer, or from a reader inside a character, is asked again without end.
 */
typedef int32_t (*TSStreamIo)(TSContext context, void* buffer, int32_t count);

/** Receives one object of the locale directory; returns 0 to stop the enumeration. */
typedef int32_t (*TSEnumLocalesCallback)(TSContext user, int32_t type, const char* name);
typedef int32_t (*TSEnumLocalesCallbackU)(TSContext user, int32_t type, const TSChar16* name);
typedef int32_t (*TSEnumLocalesCallbackW)(TSContext user, int32_t type, const TSChar32* name);

/**
 * @name Start, stop and errors
 * @{
 */

/**
 * Starts the library, or counts one more start if it runs already; all arguments of such a call are
 * ignored.
 *
 * The locale directory is the first that holds a control file: `directory`, the value of the
 * environment variable `TS_LOCALEDIR`, the built-in default. Files of a locale directory may be
 * replaced only by renaming a new file over the old one, since the library maps them.
 *
 * The first start of a process must not race with another.
 *
 * @param directory the locale directory without a final separator, or null.
 * @param allocate, free memory of locale records and of calls; null for the default.
 * @param allocateObject, freeObject memory of the object store; null for the default.
 * @param allocContext first argument of every call of the four functions above.
 * @param options 0 or TS_STRICT_OBJECTS.
 * @return 0; TS_ERR_NO_CONTROL_FILE if the library runs, but not from a control file;
 *         TS_ERR_NO_OBJECTS or TS_ERR_MEMORY if it does not run.
 */
TS_API int32_t TSInit(const char* directory, TSAllocate allocate, TSFree free,
                      TSAllocate allocateObject, TSFree freeObject, TSContext allocContext,
                      uint32_t options);

/**
 * Takes back one start. The last one releases the default locale and all objects: handles that are
 * kept over it are dead.
 *
 * A call that is not the last returns with the library's lock held by the calling thread: other
 * threads wait for it at their next start, stop or first use of an object.
 *
 * @return 0, or the first failure of the stop.
 */
TS_API int32_t TSTerm(void);

/** Sets the error code of `locale` and the shift state at `state` to 0. */
TS_API void TSInitState(TSLocale* locale, int32_t* state);

/** Returns the error code of the last call on `locale`, and keeps it. */
TS_API int32_t TSGetError(TSLocale* locale);

/** @} */

/**
 * @name Locale handles
 *
 * A locale name is `Language[_Territory][.Codepage][@Sort]`; each part is the name of an object in
 * any case, and a missing part takes the language's default. The sort `BINARY` compares by code.
 * @{
 */

/**
 * Makes a locale.
 *
 * @param name a locale name; it is not looked at with TS_LOCALE_USER.
 * @param options 0, or TS_LOCALE_USER and TS_LOCALE_FALLBACK combined.
 * @param code receives the error code; may be null. TS_ERR_ARGUMENT: bad options; TS_ERR_LANGUAGE,
 *        TS_ERR_TERRITORY, TS_ERR_CODEPAGE, TS_ERR_SORT: that part is not listed; TS_ERR_MEMORY;
 *        TS_ERR_NO_OBJECTS: any other failure of a lookup.
 * @return the handle, which the caller gives to TSReleaseLocale(), or null.
 */
TS_API TSLocale* TSGetLocale(const char* name, uint32_t options, int32_t* code);

/** TSGetLocale() with a 16-bit name. A name needs the code page object of id 367. */
TS_API TSLocale* TSGetLocaleU(const TSChar16* name, uint32_t options, int32_t* code);

/** TSGetLocale() with a name of 32-bit values, of which the low bytes count. */
TS_API TSLocale* TSGetLocaleW(const TSChar32* name, uint32_t options, int32_t* code);

/**
 * Ends a locale handle. The default locale may not be given here, unless another is set next.
 *
 * @return 0, or 1 if memory could not be given back.
 */
TS_API int32_t TSReleaseLocale(TSLocale* locale);

/**
 * Makes a locale the default one, which every function uses for a null handle. The previous default
 * locale is released at once, without a lock; after a failure it stays.
 *
 * @return 0 or the error code of TSGetLocale().
 */
TS_API int32_t TSSetLocale(const char* name, uint32_t options);

/** TSSetLocale() with a 16-bit name. */
TS_API int32_t TSSetLocaleU(const TSChar16* name, uint32_t options);

/** TSSetLocale() with a name of 32-bit values. */
TS_API int32_t TSSetLocaleW(const TSChar32* name, uint32_t options);

/**
 * Calls `callback` for each object of the locale directory, in the order of the control file, until
 * a call returns 0.
 *
 * @return 0.
 */
TS_API int32_t TSEnumLocales(TSEnumLocalesCallback callback, TSContext user);

/** TSEnumLocales() with 16-bit names; the names are empty without the code page object 367. */
TS_API int32_t TSEnumLocalesU(TSEnumLocalesCallbackU callback, TSContext user);

/** TSEnumLocales() with names of 32-bit values. */
TS_API int32_t TSEnumLocalesW(TSEnumLocalesCallbackW callback, TSContext user);

/** @} */

/**
 * @name Values of a locale
 *
 * Every value has an item number, `TS_LI_...`, the same for queries and updates. A handle's own
 * values begin as those of its territory and may be changed; TS_OPT_OBJECT_VALUE asks for the
 * territory's.
 * @{
 */

/**
 * Returns the value of a number item, or -1 with TS_ERR_ITEM for any other item.
 *
 * @param options 0 or TS_OPT_OBJECT_VALUE; -1 with TS_ERR_ARGUMENT for others.
 */
TS_API int32_t TSGetLocaleNumInfo(TSLocale* locale, int32_t item, uint32_t options);

/**
 * Writes the text of an item and a terminator. A text that does not fit is cut before the first
 * character that would not, and that is no error.
 *
 * @param size in bytes, or in characters with TS_OPT_CHAR_COUNT, with the terminator; then the
 *        bytes are not bounded. At 0 nothing is written. A one-character item takes a size above 2
 *        as 2.
 * @param options TS_OPT_OBJECT_VALUE and TS_OPT_CHAR_COUNT, which means nothing in the `U` and `W`
 *        members.
 * @return what was written with the terminator, in the unit of the size, or -1: TS_ERR_ARGUMENT for
 *         other options, TS_ERR_ITEM for an item that has no text or a default that is not listed,
 *         TS_ERR_CODEPAGE for an object's name without the code page object of id 367, which it
 *         needs where the code page is not ASCII-based.
 */
TS_API int32_t TSGetLocaleTextInfo(TSLocale* locale, int32_t item, char* buffer, int32_t size,
                                   uint32_t options);

/**
 * TSGetLocaleTextInfo() of a stateful code page. The output begins in `state` and ends in the
 * single-byte state: where it begins in the other one there must be room for 2 bytes, whatever the
 * size.
 */
TS_API int32_t TSGetLocaleTextInfoEx(TSLocale* locale, int32_t item, char* buffer, int32_t state,
                                     int32_t size, uint32_t options);
TS_API int32_t TSGetLocaleTextInfoU(TSLocale* locale, int32_t item, TSChar16* buffer, int32_t size,
                                    uint32_t options);
TS_API int32_t TSGetLocaleTextInfoW(TSLocale* locale, int32_t item, TSChar32* buffer, int32_t size,
                                    uint32_t options);

/**
 * Returns the text of an item in place, which stands as long as the handle and until the next
 * update. The one-character items have no terminator. The error code is left alone.
 *
 * @param locale a handle; null is not allowed.
 * @param useRecord 0 for the territory's value.
 * @param kind receives TS_TEXT_UNICODE, TS_TEXT_CODEPAGE or TS_TEXT_ASCII. 16-bit text of an
 *        object is little-endian and may stand on any address.
 * @return the text, or null for an item that has none or a default that is not listed.
 */
TS_API const void* TSLocaleGetTextItem(TSLocale* locale, int32_t item, int32_t useRecord,
                                       uint32_t* kind);

/** TSLocaleGetTextItem() with the handle's own values in 16-bit Unicode. */
TS_API const void* TSLocaleGetTextItemU(TSLocale* locale, int32_t item, int32_t useRecord,
                                        uint32_t* kind);

/**
 * Changes a number item of a handle: an object by its id, or a value, which a later change of
 * territory leaves alone.
 *
 * @return 1, or 0: TS_ERR_ITEM for any other item; TS_ERR_NOT_FOUND for a value out of range or an
 *         object that is not listed; TS_ERR_SEPARATOR if a separator is no single byte in the new
 *         code page; TS_ERR_MEMORY. Then nothing has changed.
 */
TS_API int32_t TSSetLocaleNumInfo(TSLocale* locale, int32_t item, int32_t value);

/**
 * Changes a text item of a handle: an object by its name, a separator or a text, which a later
 * change of territory leaves alone. An empty text changes nothing and is a success. Of a text for a
 * one-character item the first byte counts; it may not be a digit, nor the other separator of its
 * pair, nor a character of more than one byte.
 *
 * @param length in bytes, or in characters with TS_OPT_CHAR_COUNT; in elements in the `U` and `W`
 *        members.
 * @param options 0 or TS_OPT_CHAR_COUNT.
 * @return 1, or 0: TS_ERR_ARGUMENT for other options; TS_ERR_ITEM for an item that has no text to
 *         change; TS_ERR_NOT_FOUND for a value that is refused or an object that is not listed;
 *         TS_ERR_SEPARATOR; TS_ERR_MEMORY. Then nothing has changed, but that a text in the code
 *         page may stand without its 16-bit form.
 */
TS_API int32_t TSSetLocaleTextInfo(TSLocale* locale, int32_t item, const char* text, int32_t length,
                                   uint32_t options);

/** TSSetLocaleTextInfo() with stateful text that begins in `state`. */
TS_API int32_t TSSetLocaleTextInfoEx(TSLocale* locale, int32_t item, const char* text,
                                     int32_t state, int32_t length, uint32_t options);

/**
 * TSSetLocaleTextInfo() with 16-bit text of at most 263 elements. The text is kept as it is given,
 * beside its form in the code page. Every other item and a longer text are TS_ERR_NOT_FOUND, and so
 * is a text for a one-character item that has more than one element, whose first byte has then been
 * taken.
 */
TS_API int32_t TSSetLocaleTextInfoU(TSLocale* locale, int32_t item, const TSChar16* text,
                                    int32_t length, uint32_t options);

/** TSSetLocaleTextInfo() with packed values. */
TS_API int32_t TSSetLocaleTextInfoW(TSLocale* locale, int32_t item, const TSChar32* text,
                                    int32_t length, uint32_t options);

/** @} */

/**
 * @name The host's locales
 *
 * A native id is the number by which a Windows host knows a locale; this library has the same
 * numbers on every host.
 * @{
 */

/**
 * Finds the native id of a locale by its language, territory, code page and sort.
 *
 * @param native receives the id; 0 where TS_LOCALE_FALLBACK finds no language either.
 * @param options 1, which has no effect, and TS_LOCALE_FALLBACK: what matches from the left is
 *        enough.
 * @return 1, or 0 with TS_ERR_NO_NATIVE, or with TS_ERR_ARGUMENT for other options.
 */
TS_API int32_t TSConvertLocale(TSLocale* locale, uint32_t* native, uint32_t options);

/**
 * Makes the locale of a native id, with the values that the host has for it.
 *
 * @param nativeId the id, all of its 32 bits.
 * @param options 1: without the user's own settings; TS_LOCALE_FALLBACK as in TSGetLocale().
 * @param code as in TSGetLocale().
 * @return the handle, or null.
 */
TS_API TSLocale* TSConvertNativeLocale(const uint32_t* nativeId, uint32_t options, int32_t* code);

/** @} */

/**
 * @name Stepping through text
 *
 * In the `Ex` members of a stateful code page a shift byte sets the state and is no character; in
 * all other cases the length of a character follows from its first byte alone. In a code page that
 * is not stateful an `Ex` member does what its plain sibling does and leaves the states alone.
 * @{
 */

/** Returns the length in bytes of the character at `string`. */
TS_API int32_t TSByteLength(TSLocale* locale, const char* string);

/** Returns the length in bytes of the character at `string`, without the shift byte before it. */
TS_API int32_t TSByteLengthEx(TSLocale* locale, const char* string, int32_t state);

/** Returns the number of bytes, 1 to 4, of a packed value. */
TS_API int32_t TSByteLengthW(TSLocale* locale, TSChar32 value);

/** Returns the packed value of the character at `string`. */
TS_API TSChar32 TSGetChar(TSLocale* locale, const char* string);

/** Returns the packed value of the character at `string`, behind a shift byte if one is there. */
TS_API TSChar32 TSGetCharEx(TSLocale* locale, const char* string, int32_t state);

/**
 * Writes the bytes of a packed value, at most 4.
 *
 * @return the number of bytes written.
 */
TS_API int32_t TSPutChar(TSLocale* locale, char* output, TSChar32 value);

/**
 * Writes the bytes of a packed value behind the shift byte that it needs in `state`, at most 5. The
 * caller follows the state by the size of the value.
 *
 * @return the number of bytes written.
 */
TS_API int32_t TSPutCharEx(TSLocale* locale, char* output, int32_t state, TSChar32 value);

/** Returns the position behind the character at `string`; nothing is tested. */
TS_API char* TSNextChar(TSLocale* locale, const char* string);

/** Returns the position of the next character, behind the shift bytes around this one. */
TS_API char* TSNextCharEx(TSLocale* locale, const char* string, int32_t state, int32_t* newState);

/**
 * Returns the position of the character before `position`. At the start of the string a multi-byte
 * locale stays there, and a single-byte locale goes one byte before it.
 *
 * @param options not read.
 */
TS_API char* TSPrevChar(TSLocale* locale, const char* string, const char* position,
                        uint32_t options);

/** Returns the position and the state of the character before `position`; `options` is not read. */
TS_API char* TSPrevCharEx(TSLocale* locale, const char* string, const char* position, int32_t state,
                          int32_t* newState, uint32_t options);

/**
 * Counts the characters of a string; one that `length` cuts off is not counted.
 *
 * @param length the length in bytes, negative for up to the terminator.
 * @param options not read.
 */
TS_API int32_t TSNumChars(TSLocale* locale, const char* string, int32_t length, uint32_t options);

/** TSNumChars() of a string that begins in `state`. */
TS_API int32_t TSNumCharsEx(TSLocale* locale, const char* string, int32_t state, int32_t length,
                            uint32_t options);

/**
 * Returns the position of the character that holds the byte at `offset`.
 *
 * @param offset in bytes, or in characters with TS_OPT_CHAR_COUNT.
 * @param options 0 or TS_OPT_CHAR_COUNT; other bits are not read.
 */
TS_API char* TSMoveStringPointer(TSLocale* locale, const char* string, int32_t offset,
                                 uint32_t options);

/** TSMoveStringPointer() of a string that begins in `state`; an offset of 0 stores no state. */
TS_API char* TSMoveStringPointerEx(TSLocale* locale, const char* string, int32_t state,
                                   int32_t offset, int32_t* newState, uint32_t options);

/**
 * Ends a text: writes the shift byte that leaves the multi-byte state where `state` is 1, and with
 * TS_OPT_TERMINATE a terminator.
 *
 * @return the number of bytes written, 0 to 2, or -1 with TS_ERR_ARGUMENT.
 */
TS_API int32_t TSTerminateStringEx(TSLocale* locale, char* output, int32_t state, uint32_t options);

/** @} */

/**
 * @name Basic string operations
 *
 * Lengths and results count bytes, or characters with TS_OPT_CHAR_COUNT; the `U` and `Wcs` members
 * count units always. A negative length means up to the terminator. No character is split.
 * @{
 */

/**
 * Copies a string; a negative length takes the terminator along. The destination is not terminated
 * otherwise.
 *
 * @param options 0 or TS_OPT_CHAR_COUNT.
 * @return bytes or characters copied, or -1 with TS_ERR_ARGUMENT.
 */
TS_API int32_t TSStrcpy(TSLocale* locale, char* destination, int32_t size, const char* source,
                        int32_t length, uint32_t options);

/**
 * TSStrcpy() of stateful text. `state` is the state at the destination: a shift byte goes before
 * the copy where the source begins in the other one. No copy ends on a shift byte, and none closes
 * it.
 */
TS_API int32_t TSStrcpyEx(TSLocale* locale, char* destination, int32_t state, int32_t size,
                          const char* source, int32_t sourceState, int32_t length,
                          uint32_t options);
TS_API int32_t TSStrcpyU(TSLocale* locale, TSChar16* destination, int32_t size,
                         const TSChar16* source, int32_t length);
TS_API int32_t TSWcscpy(TSLocale* locale, TSChar32* destination, int32_t size,
                        const TSChar32* source, int32_t length);

/**
 * Appends a string to a terminated one. The destination has room for it, for a terminator, and in
 * the `Ex` member for two shift bytes.
 *
 * @param options TS_OPT_CHAR_COUNT and TS_OPT_TERMINATE, which a negative length implies.
 * @return the length of the destination after it, with the terminator that was written, or -1 with
 *         TS_ERR_ARGUMENT. For a length of 0: the bytes with the terminator, or the characters
 *         without it.
 */
TS_API int32_t TSStrcat(TSLocale* locale, char* destination, const char* source, int32_t length,
                        uint32_t options);
TS_API int32_t TSStrcatEx(TSLocale* locale, char* destination, int32_t state, const char* source,
                          int32_t sourceState, int32_t length, uint32_t options);
TS_API int32_t TSStrcatU(TSLocale* locale, TSChar16* destination, const TSChar16* source,
                         int32_t length, uint32_t options);
TS_API int32_t TSWcscat(TSLocale* locale, TSChar32* destination, const TSChar32* source,
                        int32_t length, uint32_t options);

/**
 * Finds a character; a negative length lets the terminator be found, but for TS_OPT_LAST_MATCH in
 * the `U` and `Wcs` members.
 *
 * @param options 0 or TS_OPT_LAST_MATCH, each with TS_OPT_CHAR_COUNT.
 * @return the match, or null; null with TS_ERR_ARGUMENT for other options.
 */
TS_API char* TSStrchr(TSLocale* locale, const char* string, int32_t length, const char* character,
                      uint32_t options);

/** TSStrchr() of stateful text; `matchState` receives the state at a match. */
TS_API char* TSStrchrEx(TSLocale* locale, const char* string, int32_t state, int32_t length,
                        const char* character, int32_t characterState, int32_t* matchState,
                        uint32_t options);
TS_API TSChar16* TSStrchrU(TSLocale* locale, const TSChar16* string, int32_t length, TSChar16 value,
                           uint32_t options);
TS_API TSChar32* TSWcschr(TSLocale* locale, const TSChar32* string, int32_t length, TSChar32 value,
                          uint32_t options);

/**
 * The span from the start of a string whose characters are in a set; TSStrcspn() and its members:
 * are not in it.
 *
 * @param options TS_OPT_CHAR_COUNT; other bits are not read.
 */
TS_API int32_t TSStrspn(TSLocale* locale, const char* string, int32_t length, const char* set,
                        int32_t setLength, uint32_t options);
TS_API int32_t TSStrspnEx(TSLocale* locale, const char* string, int32_t state, int32_t length,
                          const char* set, int32_t setState, int32_t setLength, uint32_t options);
TS_API int32_t TSStrspnU(TSLocale* locale, const TSChar16* string, int32_t length,
                         const TSChar16* set, int32_t setLength);
TS_API int32_t TSWcsspn(TSLocale* locale, const TSChar32* string, int32_t length,
                        const TSChar32* set, int32_t setLength);
TS_API int32_t TSStrcspn(TSLocale* locale, const char* string, int32_t length, const char* set,
                         int32_t setLength, uint32_t options);
TS_API int32_t TSStrcspnEx(TSLocale* locale, const char* string, int32_t state, int32_t length,
                           const char* set, int32_t setState, int32_t setLength, uint32_t options);
TS_API int32_t TSStrcspnU(TSLocale* locale, const TSChar16* string, int32_t length,
                          const TSChar16* set, int32_t setLength);
TS_API int32_t TSWcscspn(TSLocale* locale, const TSChar32* string, int32_t length,
                         const TSChar32* set, int32_t setLength);

/** The units before the terminator. */
TS_API int32_t TSStrlenU(TSLocale* locale, const TSChar16* string);
TS_API int32_t TSWcslen(TSLocale* locale, const TSChar32* string);

/**
 * Finds the next token of a string and overwrites the delimiter behind it with zeros. The caller
 * keeps the position: `next` and `length` are what the next call is given.
 *
 * @param length the string's length; receives what is left from `next`.
 * @param next receives the rest behind the token, or null.
 * @param options TS_OPT_CHAR_COUNT; other bits are not read.
 * @return the token, or null if there are only delimiters.
 */
TS_API char* TSStrtok(TSLocale* locale, char* string, int32_t* length, const char* delimiters,
                      int32_t delimiterLength, char** next, uint32_t options);

/**
 * TSStrtok() of stateful text, which stays as it is: the token is copied to `token` and terminated.
 *
 * @param tokenState the state in which the token's text is to begin.
 * @param size of the buffer `token`.
 * @param nextState receives the state at `next`.
 * @return the size of the token in its buffer, without the terminator.
 */
TS_API int32_t TSStrtokEx(TSLocale* locale, char* token, int32_t tokenState, int32_t size,
                          char* string, int32_t state, int32_t* length, const char* delimiters,
                          int32_t delimiterState, int32_t delimiterLength, char** next,
                          int32_t* nextState, uint32_t options);
TS_API TSChar16* TSStrtokU(TSLocale* locale, TSChar16* string, int32_t* length,
                           const TSChar16* delimiters, int32_t delimiterLength, TSChar16** next);
TS_API TSChar32* TSWcstok(TSLocale* locale, TSChar32* string, int32_t* length,
                          const TSChar32* delimiters, int32_t delimiterLength, TSChar32** next);

/** @} */

/**
 * @name Classification
 *
 * A character has three sets of properties; `kind` names one. TS_CT_CLASS:
 *
 * | Bit | Meaning | Bit | Meaning |
 * |---|---|---|---|
 * | 0x001 | alphabetic | 0x020 | punctuation or symbol |
 * | 0x002 | upper case | 0x040 | white space |
 * | 0x004 | lower case | 0x080 | blank |
 * | 0x008 | decimal digit | 0x100 | control |
 * | 0x010 | hexadecimal digit | 0x200 | U+0000 to U+007F |
 *
 * TS_CT_DIRECTION, one bit, by the bidirectional categories of Unicode:
 *
 * | Bit | Meaning | Bit | Meaning |
 * |---|---|---|---|
 * | 0x001 | none: controls, values not assigned | 0x040 | Arabic number |
 * | 0x002 | left to right | 0x080 | common number separator |
 * | 0x004 | right to left | 0x100 | block separator |
 * | 0x008 | European number | 0x200 | segment separator |
 * | 0x010 | European number separator | 0x400 | white space |
 * | 0x020 | European number terminator | 0x800 | other neutral |
 *
 * TS_CT_FORM; nonspacing and diacritic together also mark precomposed letters:
 *
 * | Bit | Meaning | Bit | Meaning |
 * |---|---|---|---|
 * | 0x001 | nonspacing | 0x020 | hiragana |
 * | 0x002 | diacritic | 0x040 | half-width |
 * | 0x004 | vowel mark | 0x080 | full-width |
 * | 0x008 | symbol | 0x100 | ideograph |
 * | 0x010 | katakana | 0x200 | kashida |
 *
 * The properties of a code page's characters are those that its file gives them. Any other kind is
 * TS_ERR_ARGUMENT, and the result is the class all the same.
 * @{
 */

/** Returns the properties of the character at `character`. */
TS_API uint32_t TSGetCharType(TSLocale* locale, const char* character, uint32_t kind);

/** Returns the properties of the character at `character`, behind a shift byte if one is there. */
TS_API uint32_t TSGetCharTypeEx(TSLocale* locale, const char* character, int32_t state,
                                uint32_t kind);

/** Returns the properties of a Unicode value, by Unicode 2.0; the locale holds the error alone. */
TS_API uint32_t TSGetCharTypeU(TSLocale* locale, TSChar16 value, uint32_t kind);

/** Returns the properties of a packed value. */
TS_API uint32_t TSGetCharTypeW(TSLocale* locale, TSChar32 value, uint32_t kind);

/** @} */

/**
 * @name Line ends
 *
 * A line end is LF, CR followed by LF, or one of two characters more that the code page names; the
 * `U` members use U+000A, U+000D, U+2028 and U+2029.
 * @{
 */

/**
 * Finds the first line end of a chosen set. One unit behind `length` has to be readable, for the
 * line feed behind a carriage return.
 *
 * @param type receives the mask of the line end, TS_EOL_NONE, or TS_EOL_BAD_OPTIONS.
 * @param eolLength receives its units, 1 or 2, or 0.
 * @param options masks TS_EOL_LF, TS_EOL_CRLF, TS_EOL_3, TS_EOL_4, 0 being TS_EOL_CRLF, and
 *        TS_OPT_CHAR_COUNT.
 * @return the place behind the line end, or null; with TS_ERR_ARGUMENT for other options.
 */
TS_API char* TSGetEol(TSLocale* locale, const char* string, int32_t length, uint32_t* type,
                      int32_t* eolLength, uint32_t options);

/** TSGetEol() of stateful text; `newState`, if not null, receives 0 if a line end is found. */
TS_API char* TSGetEolEx(TSLocale* locale, const char* string, int32_t state, int32_t length,
                        uint32_t* type, int32_t* eolLength, int32_t* newState, uint32_t options);
TS_API TSChar16* TSGetEolU(TSLocale* locale, const TSChar16* string, int32_t length, uint32_t* type,
                           int32_t* eolLength, uint32_t options);
TS_API TSChar32* TSGetEolW(TSLocale* locale, const TSChar32* string, int32_t length, uint32_t* type,
                           int32_t* eolLength, uint32_t options);

/**
 * Writes each line end of a set, at most 5 units: the fourth, the third, LF, CR LF.
 *
 * @param options the masks of TSGetEol() and TS_EOL_PUT_DEFAULT, which is CR LF and what 0 means.
 * @return the place behind the last one, or null with TS_ERR_ARGUMENT.
 */
TS_API char* TSPutEol(TSLocale* locale, char* output, uint32_t options);

/**
 * TSPutEol() of stateful text, behind the shift byte that leaves state 1; `newState`, if not null,
 * receives 0.
 */
TS_API char* TSPutEolEx(TSLocale* locale, char* output, int32_t state, int32_t* newState,
                        uint32_t options);

/** TSPutEol() in another order: LF, the third, the fourth, CR LF. */
TS_API TSChar16* TSPutEolU(TSLocale* locale, TSChar16* output, uint32_t options);
TS_API TSChar32* TSPutEolW(TSLocale* locale, TSChar32* output, uint32_t options);

/** @} */

/**
 * @name Conversion of whole strings
 *
 * Text goes from code page to code page through 16-bit Unicode. The output stops before the first
 * character that does not fit, which is no error; a character that the target cannot represent
 * gives its substitution character. A negative input length means up to the terminator, and then a
 * terminator is written if there is room. The states are those at the start of a string.
 *
 * Options are TS_OPT_TERMINATE, which keeps room for a terminator, and TS_OPT_CHAR_COUNT, by which
 * byte lengths, sizes and results count characters; other options give -1 with TS_ERR_ARGUMENT. The
 * error goes to the target locale. The result is what was written, terminator included.
 * @{
 */

TS_API int32_t TSConvertString(TSLocale* target, char* output, int32_t size, TSLocale* source,
                               const char* input, int32_t length, uint32_t options);
TS_API int32_t TSConvertStringEx(TSLocale* target, char* output, int32_t targetState, int32_t size,
                                 TSLocale* source, const char* input, int32_t sourceState,
                                 int32_t length, uint32_t options);
TS_API int32_t TSConvertStringW(TSLocale* target, TSChar32* output, int32_t outputCount,
                                TSLocale* source, const TSChar32* input, int32_t inputCount,
                                uint32_t options);

/** Bytes to 16-bit values; TS_OPT_CHAR_COUNT counts the input alone. */
TS_API int32_t TSStringToUnicode(TSChar16* output, int32_t count, TSLocale* locale,
                                 const char* input, int32_t length, uint32_t options);
TS_API int32_t TSStringToUnicodeEx(TSChar16* output, int32_t count, TSLocale* locale,
                                   const char* input, int32_t state, int32_t length,
                                   uint32_t options);
TS_API int32_t TSStringToUnicodeW(TSChar16* output, int32_t outputCount, TSLocale* locale,
                                  const TSChar32* input, int32_t inputCount, uint32_t options);

/** 16-bit values to bytes. */
TS_API int32_t TSUnicodeToString(TSLocale* locale, char* output, int32_t size,
                                 const TSChar16* input, int32_t count, uint32_t options);
TS_API int32_t TSUnicodeToStringEx(TSLocale* locale, char* output, int32_t state, int32_t size,
                                   const TSChar16* input, int32_t count, uint32_t options);
TS_API int32_t TSUnicodeToStringW(TSLocale* locale, TSChar32* output, int32_t outputCount,
                                  const TSChar16* input, int32_t inputCount, uint32_t options);

/**
 * Bytes to packed values of the same code page; a negative length takes the terminator along.
 * TS_OPT_CHAR_COUNT is the only option, and others are not refused.
 */
TS_API int32_t TSMbToWide(TSLocale* locale, TSChar32* output, int32_t count, const char* input,
                          int32_t length, uint32_t options);
TS_API int32_t TSMbToWideEx(TSLocale* locale, TSChar32* output, int32_t count, const char* input,
                            int32_t state, int32_t length, uint32_t options);

/**
 * Packed values to bytes of the same code page; a negative count takes the terminator along. With
 * TS_OPT_CHAR_COUNT one value more than the size is written, so `output` needs room for size + 1
 * characters and their shift bytes.
 */
TS_API int32_t TSWideToMb(TSLocale* locale, char* output, int32_t size, const TSChar32* input,
                          int32_t count, uint32_t options);
TS_API int32_t TSWideToMbEx(TSLocale* locale, char* output, int32_t state, int32_t size,
                            const TSChar32* input, int32_t count, uint32_t options);

/** @} */

/**
 * @name Conversion in slices
 * @{
 */

/**
 * Opens a conversion of text that comes in slices. The handle borrows both locales.
 *
 * @return the handle, which the caller gives to TSCloseConversion(), or null with TS_ERR_MEMORY in
 *         the target locale.
 */
TS_API TSConversion* TSOpenConversion(TSLocale* target, TSLocale* source);

/** Ends a conversion; pending output is dropped. Returns 0 or TS_ERR_FREE. */
TS_API int32_t TSCloseConversion(TSConversion* conversion);

/**
 * Converts a slice of less than 64 KiB: moves both pointers and lowers both counts.
 *
 * @return 0: all input is consumed; TS_ERR_OUTPUT_FULL: call again with more room;
 *         TS_ERR_PARTIAL_CHAR: the input ended inside a character, which the handle keeps. The
 *         locales' errors are left alone.
 */
TS_API int32_t TSConvertBuffer(TSConversion* conversion, char** output, int32_t* outputCount,
                               const char** input, int32_t* inputCount);

/** The bytes of output, its shift byte included, that one character of input can need. */
TS_API int32_t TSConversionRatio(TSLocale* target, TSLocale* source);

/** @} */

/**
 * @name Streams
 *
 * A stream gives whole characters over a caller's read or write function. It keeps the shift state
 * of the bytes, gathers the bytes of a character over short reads, holds what a writer could not
 * take, and takes characters back. It does not convert: all calls of one stream get locales of one
 * code page. Elements of 16 bits are read and written as two bytes in the order of the machine.
 *
 * A call returns 1, or 0 with the error in the locale, where nothing else is said. A call for the
 * other direction is TS_ERR_STREAM_DIRECTION. A stream holds up to 80 bytes.
 * @{
 */

/**
 * Opens a stream.
 *
 * @param io the caller's function; it is not tested.
 * @param context handed to `io`.
 * @param mode TS_STREAM_READ or TS_STREAM_WRITE.
 * @return the stream, which the caller gives to TSCloseStream(), or null with TS_ERR_ARGUMENT or
 *         TS_ERR_MEMORY.
 */
TS_API TSStream* TSOpenStream(TSLocale* locale, TSStreamIo io, TSContext context, uint32_t mode);

/**
 * Ends a stream. A writer delivers what it holds and, if that worked, leaves the multi-byte state
 * with a shift byte. The stream is gone whatever the result; TS_ERR_STREAM_FLUSH or TS_ERR_FREE
 * tells why it is 0.
 */
TS_API int32_t TSCloseStream(TSStream* stream, TSLocale* locale);

/**
 * Delivers what a writer holds. If that fails, the held bytes are dropped: TS_ERR_STREAM_FLUSH. Of
 * a reader it drops what was pushed back.
 */
TS_API int32_t TSFlushStream(TSStream* stream, TSLocale* locale);

/**
 * The packed value of the next character, or -1. At the end of the data there is no error; else it
 * is TS_ERR_STREAM_CUT where the data ended inside a character, TS_ERR_STREAM_READ where the read
 * failed there, or TS_ERR_STREAM_COUNT for a failure in front of a character and for a count that
 * was not asked for. The bytes of a cut character are held, and the next call goes on behind them.
 */
TS_API int32_t TSReadCharW(TSStream* stream, TSLocale* locale);

/**
 * The next 16-bit value, or 0xFFFF, with the errors of TSReadCharW(); a single byte is
 * TS_ERR_STREAM_READ and held. Each call takes memory, and may end with TS_ERR_MEMORY.
 */
TS_API TSChar16 TSReadCharU(TSStream* stream, TSLocale* locale);

/**
 * Reads up to a line end, the end of the data, or as much as fits.
 *
 * @param size of the output: bytes, or characters with TS_OPT_CHAR_COUNT, each of which may need as
 *        many bytes as the longest character; elements for `U` and `W`.
 * @param options the line ends that stop the read, TS_EOL_LF, TS_EOL_CRLF, TS_EOL_3 and TS_EOL_4;
 *        TS_EOL_STRIP, not to store the one that did; TS_OPT_TERMINATE; TS_OPT_CHAR_COUNT.
 * @return what was stored, the terminator counted, in the unit of the size; -1 if there was nothing
 *         but the end of the data; -2 for a failure. Behind a failure in a line, what was stored
 *         comes without a terminator, and the error is set.
 */
TS_API int32_t TSReadString(TSStream* stream, TSLocale* locale, char* output, int32_t size,
                            uint32_t options);

/**
 * The same with shift bytes, where `state` is that of the output; they count in a size in bytes.
 * A terminated output that ends in the multi-byte state is closed by a shift byte, for which the
 * last character goes back to the stream if there is no room. A size in characters does not count
 * shift bytes: the output needs room for one before each character and one at the end.
 */
TS_API int32_t TSReadStringEx(TSStream* stream, TSLocale* locale, char* output, int32_t state,
                              int32_t size, uint32_t options);
TS_API int32_t TSReadStringU(TSStream* stream, TSLocale* locale, TSChar16* output, int32_t size,
                             uint32_t options);

/** As TSReadString(), but TS_EOL_CRLF stops the read only together with TS_EOL_STRIP. */
TS_API int32_t TSReadStringW(TSStream* stream, TSLocale* locale, TSChar32* output, int32_t size,
                             uint32_t options);

/**
 * Puts a character in front of what is to be read; TS_ERR_BUFFER if the stream holds too much.
 * TSUngetCharEx() takes one shift byte in front of the character for its state, and keeps apart
 * what is held in the other state, as TSUngetCharW() does.
 */
TS_API int32_t TSUngetChar(TSStream* stream, TSLocale* locale, const char* character);
TS_API int32_t TSUngetCharEx(TSStream* stream, TSLocale* locale, const char* character,
                             int32_t state);
TS_API int32_t TSUngetCharU(TSStream* stream, TSLocale* locale, TSChar16 value);
TS_API int32_t TSUngetCharW(TSStream* stream, TSLocale* locale, TSChar32 value);

/**
 * Writes a character. If `io` does not take it, it is held and goes out with a later write or
 * flush: TS_ERR_STREAM_HELD. If the stream holds too much for that, the character is lost:
 * TS_ERR_BUFFER. TSWriteCharEx() writes the shift byte that leads to the state of the character.
 */
TS_API int32_t TSWriteChar(TSStream* stream, TSLocale* locale, const char* character);
TS_API int32_t TSWriteCharEx(TSStream* stream, TSLocale* locale, const char* character,
                             int32_t state);
TS_API int32_t TSWriteCharU(TSStream* stream, TSLocale* locale, TSChar16 value);
TS_API int32_t TSWriteCharW(TSStream* stream, TSLocale* locale, TSChar32 value);

/** @} */

/**
 * @name String mapping
 *
 * The image of a string under one mapping:
 *
 * | Mapping | Image |
 * |---|---|
 * | 0, TS_MAP_COPY | the string |
 * | TS_MAP_DIGITS | every digit as its ASCII digit |
 * | TS_MAP_FULL_WIDTH, TS_MAP_HALF_WIDTH | the wide forms of the code page, or what they are of |
 * | TS_MAP_LOWER, TS_MAP_UPPER | the other case, with the pairs of the language |
 * | TS_MAP_LOWER or TS_MAP_UPPER, and TS_MAP_SIMPLE | the other case, without pairs |
 *
 * A pair replaces a character or two by one or two others. The `U` member maps case and width by
 * the library's own tables, of Unicode 2.0. A negative source length takes in the terminator, which
 * is mapped and counted like a character; the destination is not terminated otherwise. What does
 * not fit whole is left out, and that is no error. Source and destination may not overlap.
 * @{
 */

/**
 * Writes the image of a string.
 *
 * @param mapping a mapping, with or without TS_OPT_CHAR_COUNT: then size, length and result count
 *        characters, and no more than 512 bytes are written.
 * @return bytes or characters written, or -1 with TS_ERR_ARGUMENT.
 */
TS_API int32_t TSMapString(TSLocale* locale, char* destination, int32_t size, const char* source,
                           int32_t length, uint32_t mapping);

/**
 * TSMapString() of stateful text. `state` is the state at the destination; the one that it ends in
 * is not handed back, and nothing closes it.
 */
TS_API int32_t TSMapStringEx(TSLocale* locale, char* destination, int32_t state, int32_t size,
                             const char* source, int32_t sourceState, int32_t length,
                             uint32_t mapping);
TS_API int32_t TSMapStringU(TSLocale* locale, TSChar16* destination, int32_t size,
                            const TSChar16* source, int32_t length, uint32_t mapping);
TS_API int32_t TSMapStringW(TSLocale* locale, TSChar32* destination, int32_t size,
                            const TSChar32* source, int32_t length, uint32_t mapping);

/** @} */

/**
 * @name Truncation
 * @{
 */

/**
 * Cuts a terminated string in place so that it fits a size, its terminator included, and never
 * inside a character. A size below 1 empties the string.
 *
 * In a multi-byte locale the first blank of a string is not stripped, and blanks that have a single
 * one-byte character behind them at the very end are stripped with it.
 *
 * @param size in bytes, or with TS_OPT_CHAR_COUNT in characters, the terminator being one.
 * @param options TS_OPT_CHAR_COUNT; TS_TRUNC_STRIP_BLANKS: take the blanks off the end, even of a
 *        string that fits; TS_OPT_IGNORE_WIDTH: full-width blanks, too. Other bits are not read.
 * @return bytes or characters of the string with its terminator; 0 if it was left as it is, since
 *         it fits and blanks were not to be stripped.
 */
TS_API int32_t TSTruncateString(TSLocale* locale, char* string, int32_t size, uint32_t options);

/**
 * TSTruncateString() of a stateful string that begins in `state`. Text that ends in the multi-byte
 * state is closed by a shift byte, for which its last character gives way: where the text begins in
 * that state there must be room for 2 bytes, whatever the size. Where blanks are stripped, the byte
 * before them goes, too.
 */
TS_API int32_t TSTruncateStringEx(TSLocale* locale, char* string, int32_t state, int32_t size,
                                  uint32_t options);

/** @} */

/**
 * @name Comparison
 *
 * Strings are compared by their code, and not by the order of a language: by bytes or by units.
 * Options, alone or together:
 *
 * | Option | Meaning |
 * |---|---|
 * | TS_OPT_IGNORE_CASE | by upper-case forms, with the pairs of the language |
 * | TS_OPT_IGNORE_WIDTH | by half-width forms, and not by upper-case forms |
 * | TS_OPT_STRIP_BLANKS | the blanks at the end of both strings do not count |
 * | TS_OPT_CHAR_COUNT | lengths count characters; without effect in the `U` and `Wcs` members |
 *
 * A result is the difference of what differs first, or of the lengths. A failure gives 0: with
 * TS_ERR_ARGUMENT for other options, and with TS_ERR_MEMORY, which only TS_OPT_IGNORE_CASE in a
 * language with pairs can have.
 * @{
 */

/**
 * Compares two strings. A character that a length cuts off does not count, and of the negative
 * lengths -1 alone is up to the terminator; others are 0.
 *
 * @return below, above or equal to 0.
 */
TS_API int32_t TSStrcmp(TSLocale* locale, const char* string1, int32_t length1, const char* string2,
                        int32_t length2, uint32_t options);

/** TSStrcmp() of stateful strings. Every negative length is up to the terminator. */
TS_API int32_t TSStrcmpEx(TSLocale* locale, const char* string1, int32_t state1, int32_t length1,
                          const char* string2, int32_t state2, int32_t length2, uint32_t options);

/** The blank that TS_OPT_STRIP_BLANKS strips has the bytes 0x00, 0x20 as they are stored. */
TS_API int32_t TSStrcmpU(TSLocale* locale, const TSChar16* string1, int32_t length1,
                         const TSChar16* string2, int32_t length2, uint32_t options);

/** TS_OPT_IGNORE_WIDTH is refused here. */
TS_API int32_t TSWcscmp(TSLocale* locale, const TSChar32* string1, int32_t length1,
                        const TSChar32* string2, int32_t length2, uint32_t options);

/** @} */

/**
 * @name Collation
 *
 * Strings are compared by the order of the locale's sort. A locale with the binary sort compares
 * them by their code, as TSStrcmp() and its siblings do, with the options that these know.
 *
 * Options:
 *
 * | Option | Meaning |
 * |---|---|
 * | 0 | by the sort, on four levels |
 * | TS_OPT_IGNORE_CASE | the order of the keys that this option gives |
 * | TS_OPT_IGNORE_WIDTH | the same; blanks at the end of byte strings do not count |
 * | TS_OPT_STRIP_BLANKS | blanks at the end do not count, in the `U` and `Wcs` members |
 * | TS_OPT_CHAR_COUNT | lengths count characters, in the members for byte strings |
 *
 * A result below 0 means that the first string comes first; its size means nothing. A failure gives
 * 0: with TS_ERR_MEMORY, or with TS_ERR_ARGUMENT for other options. On success the error code stays
 * as it was, but for TS_OPT_IGNORE_WIDTH and the binary sort, which clear it. Negative lengths are
 * up to the terminator.
 * @{
 */

/** Compares two strings. TS_OPT_STRIP_BLANKS is known with TS_OPT_IGNORE_WIDTH alone. */
TS_API int32_t TSStrcoll(TSLocale* locale, const char* string1, int32_t length1,
                         const char* string2, int32_t length2, uint32_t options);

/** TSStrcoll() of stateful strings. TS_OPT_STRIP_BLANKS is not known. */
TS_API int32_t TSStrcollEx(TSLocale* locale, const char* string1, int32_t state1, int32_t length1,
                           const char* string2, int32_t state2, int32_t length2, uint32_t options);

/**
 * TS_OPT_CHAR_COUNT is refused. The blank that TS_OPT_STRIP_BLANKS strips has the bytes 0x00, 0x20
 * as they are stored.
 */
TS_API int32_t TSStrcollU(TSLocale* locale, const TSChar16* string1, int32_t length1,
                          const TSChar16* string2, int32_t length2, uint32_t options);

/** TS_OPT_CHAR_COUNT has no effect. */
TS_API int32_t TSWcscoll(TSLocale* locale, const TSChar32* string1, int32_t length1,
                         const TSChar32* string2, int32_t length2, uint32_t options);

/** @} */

/**
 * @name Sort keys
 *
 * A key is a string of bytes, zeros among them. Keys of one locale and one option, compared byte by
 * byte as memcmp() does, a shorter one first where it begins the other, rank strings by the
 * locale's sort: make it once, and sort or index by it. In a locale with the binary sort a key is
 * the text itself, numbers with the high byte first.
 *
 * `size` is that of the buffer in bytes. Options are 0, TS_OPT_IGNORE_CASE or TS_OPT_IGNORE_WIDTH;
 * a negative length is up to the terminator. TS_OPT_CHAR_COUNT, which has no effect in the `U` and
 * `Wcs` members, says that the length counts characters.
 *
 * @return the length of the key. The key is written if the buffer has room for it behind its first
 *         address that is a multiple of 4: a buffer at any other address needs up to 3 bytes more,
 *         also where the result is not above `size`. A buffer that is too short is left as it is.
 *         Keys of the binary sort need no such step, and folded text is written as far as it fits.
 *         -1 with TS_ERR_ARGUMENT or TS_ERR_MEMORY is a failure; on success the error code stays as
 *         it was.
 * @{
 */

/** Makes the key of a string. That of an empty string has three zero bytes. */
TS_API int32_t TSStrxfrm(TSLocale* locale, char* buffer, int32_t size, const char* string,
                         int32_t length, uint32_t options);

/** TSStrxfrm() of a stateful string. */
TS_API int32_t TSStrxfrmEx(TSLocale* locale, char* buffer, int32_t size, const char* string,
                           int32_t state, int32_t length, uint32_t options);
TS_API int32_t TSStrxfrmU(TSLocale* locale, char* buffer, int32_t size, const TSChar16* string,
                          int32_t length, uint32_t options);
TS_API int32_t TSWcsxfrm(TSLocale* locale, char* buffer, int32_t size, const TSChar32* string,
                         int32_t length, uint32_t options);

/** @} */

/**
 * @name Search
 *
 * Finds the first place in string 1 where string 2 occurs. Options are 0, which compares bytes at
 * the beginning of characters, and TS_OPT_IGNORE_CASE or TS_OPT_IGNORE_WIDTH, which compare by
 * collation, and in a single-byte locale by TSStrcmp() with case ignored. Negative lengths are up
 * to the terminator.
 *
 * @return the place; string 1 for an empty string 2; null if there is none, or with TS_ERR_ARGUMENT
 *         for other options. A comparison that fails reads as a match.
 * @{
 */

/**
 * Where case is ignored in a multi-byte locale, places are tried only if the first character of
 * string 1 is that of string 2 but for case.
 *
 * @param options TS_OPT_CHAR_COUNT, too: lengths count characters, and 0 is the whole string unless
 *        width is ignored.
 */
TS_API char* TSStrstr(TSLocale* locale, const char* string1, int32_t length1, const char* string2,
                      int32_t length2, uint32_t options);

/** TSStrstr() of stateful strings; `matchState` receives the state where the search ended. */
TS_API char* TSStrstrEx(TSLocale* locale, const char* string1, int32_t state1, int32_t length1,
                        const char* string2, int32_t state2, int32_t length2, int32_t* matchState,
                        uint32_t options);
TS_API TSChar16* TSStrstrU(TSLocale* locale, const TSChar16* string1, int32_t length1,
                           const TSChar16* string2, int32_t length2, uint32_t options);

/** With an option string 2 is found at the head of string 1 or not at all. */
TS_API TSChar32* TSWcsstr(TSLocale* locale, const TSChar32* string1, int32_t length1,
                          const TSChar32* string2, int32_t length2, uint32_t options);

/** @} */

/**
 * @name Numbers, money and times as text
 *
 * A number or an amount is written with the point, the separator, the group sizes and the digits of
 * the locale, in the digits of its code page. Options of all these functions:
 *
 * | Option | Meaning |
 * |---|---|
 * | TS_OPT_OBJECT_VALUE | the values of the locale's objects, not those of the handle |
 * | TS_OPT_TERMINATE | write a terminator, for which a place of the size is kept |
 * | TS_OPT_CHAR_COUNT | size and result count characters; `U` and `W` members take no notice |
 *
 * Text that does not fit is cut on the right, with TS_ERR_BUFFER. Nothing here allocates memory.
 * The page docs/oddities.md lists the results that look strange and are meant.
 * @{
 */

/**
 * Writes a whole number.
 *
 * @param options also TS_OPT_UNSIGNED: the value is one of unsigned 32 bits.
 * @return bytes or characters written, the terminator included; 0 with TS_ERR_BUFFER if the size is
 *         0, -1 with TS_ERR_ARGUMENT if the options are refused.
 */
TS_API int32_t TSLongToString(TSLocale* locale, int32_t value, char* destination, int32_t size,
                              uint32_t options);

/** TSLongToString() into text that is in `state`: a shift byte goes first where one is needed. */
TS_API int32_t TSLongToStringEx(TSLocale* locale, int32_t value, char* destination, int32_t state,
                                int32_t size, uint32_t options);
TS_API int32_t TSLongToStringU(TSLocale* locale, int32_t value, TSChar16* destination, int32_t size,
                               uint32_t options);
TS_API int32_t TSLongToStringW(TSLocale* locale, int32_t value, TSChar32* destination, int32_t size,
                               uint32_t options);

/**
 * Writes a double with TS_LI_FRAC_DIGITS digits behind the point: those of six rounded digits, cut
 * and not rounded again. The point is always written. Beyond six digits five are shown and zeros
 * for all others but one.
 *
 * @return as TSLongToString() does; a last character that does not fit is no error.
 */
TS_API int32_t TSDoubleToString(TSLocale* locale, double value, char* destination, int32_t size,
                                uint32_t options);

/**
 * TSDoubleToString() into text that is in `state`. Where characters are counted the number
 * overwrites the shift byte.
 */
TS_API int32_t TSDoubleToStringEx(TSLocale* locale, double value, char* destination, int32_t state,
                                  int32_t size, uint32_t options);
TS_API int32_t TSDoubleToStringU(TSLocale* locale, double value, TSChar16* destination,
                                 int32_t size, uint32_t options);
TS_API int32_t TSDoubleToStringW(TSLocale* locale, double value, TSChar32* destination,
                                 int32_t size, uint32_t options);

/**
 * Writes an amount of money: the currency symbol, a sign or parentheses by the locale's sign
 * position, and the amount as TSDoubleToString() shapes it, with the monetary values.
 *
 * @param options also TS_OPT_INTERNATIONAL: the international symbol and its number of digits.
 * @return as TSLongToString() does.
 */
TS_API int32_t TSCurrencyToString(TSLocale* locale, double value, char* destination, int32_t size,
                                  uint32_t options);
TS_API int32_t TSCurrencyToStringEx(TSLocale* locale, double value, char* destination,
                                    int32_t state, int32_t size, uint32_t options);
TS_API int32_t TSCurrencyToStringU(TSLocale* locale, double value, TSChar16* destination,
                                   int32_t size, uint32_t options);
TS_API int32_t TSCurrencyToStringW(TSLocale* locale, double value, TSChar32* destination,
                                   int32_t size, uint32_t options);

/** @} */

/**
 * @name Numbers from text
 *
 * These read the longest number at the start of a text, and tell where it ends. A text without a
 * number is no error: the result is 0. Options:
 *
 * | Option | Meaning |
 * |---|---|
 * | TS_OPT_OBJECT_VALUE | the values of the locale's objects, not those of the handle |
 * | TS_OPT_MAP_DIGITS | every digit of the code page reads as its ASCII digit |
 * | TS_OPT_MONETARY | the monetary separators, and the sign texts of the locale |
 * | TS_OPT_CHAR_COUNT | the length counts characters; `U` and `W` members take no notice |
 *
 * Blanks before the number are skipped. Separators may stand between digits anywhere.
 * @{
 */

/**
 * Reads a whole number. One that is too large gives the nearest that fits, without an error.
 *
 * @param end takes the position of what was not read, if it is not null.
 * @param base 2 to 36; 0 for 10, or as a leading 0 (8) or 0x (16) tells.
 * @param options also TS_OPT_UNSIGNED: the result is one of unsigned 32 bits, and no minus sign is
 *        read.
 * @return the number; 0 with TS_ERR_BASE or TS_ERR_ARGUMENT if base or options are refused.
 */
TS_API int32_t TSStringToLong(TSLocale* locale, const char* string, int32_t length, char** end,
                              int32_t base, uint32_t options);

/** TSStringToLong() of stateful text, with the state at its start and the one at `end`. */
TS_API int32_t TSStringToLongEx(TSLocale* locale, const char* string, int32_t state, int32_t length,
                                char** end, int32_t* endState, int32_t base, uint32_t options);
TS_API int32_t TSStringToLongU(TSLocale* locale, const TSChar16* string, int32_t length,
                               TSChar16** end, int32_t base, uint32_t options);
TS_API int32_t TSStringToLongW(TSLocale* locale, const TSChar32* string, int32_t length,
                               TSChar32** end, int32_t base, uint32_t options);

/**
 * Reads a double. An exponent, with D or E, is read behind a point only: 1.e5, not 1e5.
 *
 * @param end takes the position of what was not read, if it is not null; refused options leave it
 *        alone.
 * @return the number; 0 with TS_ERR_ARGUMENT if the options are refused.
 */
TS_API double TSStringToDouble(TSLocale* locale, const char* string, int32_t length, char** end,
                               uint32_t options);
TS_API double TSStringToDoubleEx(TSLocale* locale, const char* string, int32_t state,
                                 int32_t length, char** end, int32_t* endState, uint32_t options);
TS_API double TSStringToDoubleU(TSLocale* locale, const TSChar16* string, int32_t length,
                                TSChar16** end, uint32_t options);
TS_API double TSStringToDoubleW(TSLocale* locale, const TSChar32* string, int32_t length,
                                TSChar32** end, uint32_t options);

/** @} */

/**
 * @name Times as text
 *
 * A pattern is text with directives, each a percent sign, the letter of a directive, and between
 * the two a number sign if wanted. The page docs/patterns.md has the language.
 * @{
 */

/** A broken-down time. Nothing here computes a date: each directive has its field. */
typedef struct TSTimeFields {
    int32_t seconds;
    int32_t minutes;
    int32_t hours; /**< 0 to 23 */
    int32_t dayOfMonth;
    int32_t month;     /**< 0 to 11 */
    int32_t year;      /**< less 1900 */
    int32_t dayOfWeek; /**< 0 is Sunday */
    int32_t dayOfYear; /**< 0 to 365 */
} TSTimeFields;

/**
 * Writes a time by a pattern.
 *
 * @param options TS_OPT_OBJECT_VALUE, TS_OPT_TERMINATE, TS_OPT_CHAR_COUNT.
 * @return bytes or characters written, the terminator included, also behind a failure:
 * TS_ERR_BUFFER if the text does not fit, or ends with a number just at the size; TS_ERR_NOT_FOUND
 * for a field outside its range; TS_ERR_DIRECTIVE for an unknown directive. -1 with TS_ERR_ARGUMENT
 * if the options are refused.
 */
TS_API int32_t TSTimeToString(TSLocale* locale, const TSTimeFields* time, char* destination,
                              int32_t size, const char* pattern, int32_t patternLength,
                              uint32_t options);

/** TSTimeToString() of stateful text: the states are those at the start of both texts. */
TS_API int32_t TSTimeToStringEx(TSLocale* locale, const TSTimeFields* time, char* destination,
                                int32_t state, int32_t size, const char* pattern,
                                int32_t patternState, int32_t patternLength, uint32_t options);
TS_API int32_t TSTimeToStringU(TSLocale* locale, const TSTimeFields* time, TSChar16* destination,
                               int32_t size, const TSChar16* pattern, int32_t patternLength,
                               uint32_t options);
TS_API int32_t TSTimeToStringW(TSLocale* locale, const TSTimeFields* time, TSChar32* destination,
                               int32_t size, const TSChar32* pattern, int32_t patternLength,
                               uint32_t options);

/**
 * Reads a time by a pattern: literal characters have to match, directives read their fields, and
 * all other fields stay as they are. It ends well as soon as text or pattern is used up.
 *
 * @param options TS_OPT_OBJECT_VALUE, TS_OPT_CHAR_COUNT.
 * @return bytes or characters read; -1 with TS_ERR_NOT_FOUND for a text that does not match,
 *         TS_ERR_DIRECTIVE for an unknown directive, TS_ERR_ARGUMENT for refused options. The
 *         fields are of no use then.
 */
TS_API int32_t TSStringToTime(TSLocale* locale, TSTimeFields* time, const char* string,
                              int32_t length, const char* pattern, int32_t patternLength,
                              uint32_t options);
TS_API int32_t TSStringToTimeEx(TSLocale* locale, TSTimeFields* time, const char* string,
                                int32_t state, int32_t length, const char* pattern,
                                int32_t patternState, int32_t patternLength, uint32_t options);
TS_API int32_t TSStringToTimeU(TSLocale* locale, TSTimeFields* time, const TSChar16* string,
                               int32_t length, const TSChar16* pattern, int32_t patternLength,
                               uint32_t options);
TS_API int32_t TSStringToTimeW(TSLocale* locale, TSTimeFields* time, const TSChar32* string,
                               int32_t length, const TSChar32* pattern, int32_t patternLength,
                               uint32_t options);

/** @} */

/**
 * @name Message catalogs
 *
 * A catalog is a file of numbered sets of numbered messages, written in one locale. It is searched
 * by templates, paths that are parted by `;`:
 *
 * | In a template | Stands for |
 * |---|---|
 * | `%N` | the name of the catalog |
 * | `%l` | the code of the language, such as `DE` |
 * | `%t` | the code of the territory, such as `DEU` |
 * | `%L` | both, with `_` between them |
 * | `%%` | a percent sign |
 *
 * Codes are written in the code page of the locale; `;`, `%`, `_` and the letters are ASCII. Empty
 * paths and paths of more than 255 bytes are passed over.
 *
 * A slim catalog reads its file for each message and belongs to one thread at a time; several
 * threads may read from a preloaded one as long as all messages are found. A catalog borrows the
 * locale that it was opened with.
 * @{
 */

/**
 * Finds a catalog and opens it. The templates of `templates` come first, then those of the
 * environment variable `TS_NLSPATH`, of which 511 bytes count, then `name` itself. If no file is
 * found the search is done once more with the codes of the default language.
 *
 * In the slim form the file is not looked at before the first message.
 *
 * @param templates may be null or empty.
 * @param flags 0: slim, two searches; TS_CATALOG_SEARCH_ONCE: slim, one search;
 *        TS_CATALOG_PRELOAD: preloaded, one search.
 * @return the catalog, which the caller gives to TSCloseCatalog(), or null with TS_ERR_ARGUMENT,
 *         TS_ERR_MEMORY, TS_ERR_NO_CATALOG or the code of a file that could not be mapped.
 */
TS_API TSCatalog* TSOpenCatalog(TSLocale* locale, const char* templates, const char* name,
                                uint32_t flags);
TS_API TSCatalog* TSOpenCatalogU(TSLocale* locale, const TSChar16* templates, const TSChar16* name,
                                 uint32_t flags);
TS_API TSCatalog* TSOpenCatalogW(TSLocale* locale, const TSChar32* templates, const TSChar32* name,
                                 uint32_t flags);

/**
 * Closes a catalog. The locale that its texts are in stays until the process ends.
 *
 * @return 0, or TS_ERR_NULL_CATALOG.
 */
TS_API int32_t TSCloseCatalog(TSCatalog* catalog);

/**
 * Writes a message in the code page of the catalog's locale. One that is too long is cut at a whole
 * character, and that is no error; a message has its terminator always.
 *
 * @param set, message numbers from 1.
 * @param size in bytes, terminator included; below 1 the output is one byte all the same.
 * @param defaultText what to write where the message is missing, or null. It is copied without its
 *        terminator where it does not fit.
 * @return 0; TS_ERR_NO_MESSAGE, with the same code in the locale, without a message and a default
 *         text.
 */
TS_API int32_t TSGetMessage(TSCatalog* catalog, int32_t set, int32_t message, char* output,
                            int32_t size, const char* defaultText);

/**
 * TSGetMessage() in the other forms. The last element of the output is 0 in any case, so that a
 * default text has its terminator, too. A null output gives TS_ERR_NO_MESSAGE, with TS_ERR_ARGUMENT
 * in the locale; without memory it is TS_ERR_MEMORY there.
 */
TS_API int32_t TSGetMessageU(TSCatalog* catalog, int32_t set, int32_t message, TSChar16* output,
                             int32_t size, const TSChar16* defaultText);
TS_API int32_t TSGetMessageW(TSCatalog* catalog, int32_t set, int32_t message, TSChar32* output,
                             int32_t size, const TSChar32* defaultText);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
