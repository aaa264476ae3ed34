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
#elif defined(VLX_BUILD)
#define TS_API __declspec(dllexport)
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

/** Gives `bytes` bytes of memory, or null. */
typedef void* (*TSAllocate)(TSContext context, uint32_t bytes);

/** Takes memory back; non-zero is success. */
typedef int32_t (*TSFree)(TSContext context, void* memory);

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

#ifdef __cplusplus
}
#endif

#endif
