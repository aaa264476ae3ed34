/**
 * @file nls1.h
 * The facade of the library. It starts the library by itself at the first use in a process, gives
 * each thread a locale of its own, and names locales and code pages by numeric ids. Clean C11 and
 * C++.
 *
 * The default locale, which every function of tessera.h uses for a null handle, is set to the
 * user's locale at the start, and NLS1_SetLocale() replaces it. The locale of a thread is a handle
 * that its callers fetch and pass on; no other function looks at it.
 *
 * A start that failed is not tried again; then no thread has a locale.
 */
#ifndef NLS1_H
#define NLS1_H

#include "tessera.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @name Locales of the process and of threads
 *
 * The locale directory is that of `NLS1_LOCALEDIR`, else that of TSInit(). A pair of ids, `ids`,
 * has a language in its low 16 bits and a territory in its high ones; 0 is none.
 * @{
 */

/** Makes sure that the library runs; returns 0. */
TS_API int32_t NLS1_PrivateFunction_GetProcessLocale(void);

/**
 * Returns the locale of the calling thread, which is made at the first call from the user's
 * settings and released when the thread ends; null if the library does not run. It is not the
 * caller's to release, and NLS1_SetLocaleFromNative() replaces it.
 */
TS_API TSLocale* NLS1_PrivateFunction_GetThreadLocale(void);

/**
 * Makes a locale from ids, as TSGetLocale() does from a name.
 *
 * @param codePage an id, or 0.
 * @param options those of TSGetLocale().
 * @param code receives the error code; may be null. TS_ERR_FAILED: the library does not run;
 *        TS_ERR_LANGUAGE, TS_ERR_TERRITORY, TS_ERR_CODEPAGE: no such id; else as TSGetLocale().
 * @return the handle, which the caller gives to TSReleaseLocale(), or null.
 */
TS_API TSLocale* NLS1_GetLocale(int32_t ids, int32_t codePage, uint32_t options, int32_t* code);

/**
 * Makes a locale from ids the default one.
 *
 * @param options TS_LOCALE_USER, TS_LOCALE_FALLBACK; NLS1_PROCESS, which has the same effect as 0.
 *        NLS1_THREAD is refused: with it alone the result is TS_ERR_ARGUMENT.
 * @return 0, TS_ERR_NO_OBJECTS if the library does not run, or the code of NLS1_GetLocale().
 */
TS_API int32_t NLS1_SetLocale(int32_t ids, int32_t codePage, uint32_t options);

/**
 * Makes the locale of a host's id that of the thread, with NLS1_THREAD, and the default one, with
 * NLS1_PROCESS. Without either the id is only tried.
 *
 * @param options further 1: without the user's own changes; TS_LOCALE_FALLBACK.
 * @return 0, TS_ERR_NO_OBJECTS if the library does not run, or an error code of TSGetLocale().
 */
TS_API int32_t NLS1_SetLocaleFromNative(const uint32_t* nativeId, uint32_t options);

/**
 * Sets the host's own locale of the thread. Only Windows has one.
 *
 * @param options TS_LOCALE_FALLBACK accepts an id that fits in part.
 * @return 0, TS_ERR_NO_NATIVE, or the code of NLS1_GetLocale().
 */
TS_API int32_t NLS1_SetNativeLocale(int32_t ids, int32_t codePage, uint32_t unused,
                                    uint32_t options);
TS_API int32_t NLS1_SetNativeFromLocale(TSLocale* locale, uint32_t unused, uint32_t options);

/**
 * TSConvertNativeLocale(), with TS_ERR_NO_OBJECTS if the library does not run and TS_ERR_ARGUMENT
 * for a null id.
 */
TS_API TSLocale* NLS1_ConvertNativeLocale(const uint32_t* nativeId, uint32_t options,
                                          int32_t* code);

/** @} */

/**
 * @name Items of a locale
 *
 * The functions of tessera.h with the same names. TS_LI_DEFAULT_CODEPAGE_OBJECT is a number here:
 * the id of the default code page of the language, which NLS1_SetLocaleNumInfo() hands on by its
 * name; a value below 1 does nothing and returns 0, an id that is not listed returns
 * TS_ERR_NOT_FOUND.
 * @{
 */

TS_API int32_t NLS1_GetLocaleNumInfo(TSLocale* locale, int32_t item, uint32_t option);
TS_API int32_t NLS1_SetLocaleNumInfo(TSLocale* locale, int32_t item, int32_t value,
                                     uint32_t options);
TS_API int32_t NLS1_GetLocaleTextInfo(TSLocale* locale, int32_t item, char* buffer, int32_t size,
                                      uint32_t options);
TS_API int32_t NLS1_GetLocaleTextInfoEx(TSLocale* locale, int32_t item, char* buffer, int32_t state,
                                        int32_t size, uint32_t options);
TS_API int32_t NLS1_GetLocaleTextInfoU(TSLocale* locale, int32_t item, TSChar16* buffer,
                                       int32_t size, uint32_t options);
TS_API int32_t NLS1_GetLocaleTextInfoW(TSLocale* locale, int32_t item, TSChar32* buffer,
                                       int32_t size, uint32_t options);
TS_API int32_t NLS1_SetLocaleTextInfo(TSLocale* locale, int32_t item, const char* text,
                                      int32_t length, uint32_t options);
TS_API int32_t NLS1_SetLocaleTextInfoEx(TSLocale* locale, int32_t item, const char* text,
                                        int32_t state, int32_t length, uint32_t options);
TS_API int32_t NLS1_SetLocaleTextInfoU(TSLocale* locale, int32_t item, const TSChar16* text,
                                       int32_t length, uint32_t options);
TS_API int32_t NLS1_SetLocaleTextInfoW(TSLocale* locale, int32_t item, const TSChar32* text,
                                       int32_t length, uint32_t options);

/** @} */

/**
 * @name Ids and names of objects
 *
 * They are looked up in the list of the locale directory; no object is loaded. If the library does
 * not run the code is TS_ERR_NO_OBJECTS, for a null name or buffer TS_ERR_ARGUMENT.
 * @{
 */

/**
 * Returns the id of an object by its name, in any case; 0 with TS_ERR_NOT_FOUND if it is not
 * listed. The binary sort has id 0 and no error. A code page may be given by an alias; where a name
 * is both, the alias counts.
 *
 * @param code receives the error code; may be null.
 */
TS_API int32_t NLS1_GetLanguageId(const char* name, int32_t* code);
TS_API int32_t NLS1_GetTerritoryId(const char* name, int32_t* code);
TS_API int32_t NLS1_GetCodepageId(const char* name, int32_t* code);
TS_API int32_t NLS1_GetSortId(const char* name, int32_t* code);

/**
 * Writes the name of an object. Languages and territories may be given by a pair of ids. The
 * binary sort, id 0, writes nothing and is no error.
 *
 * @param size in bytes, terminator included.
 * @return 0, TS_ERR_NOT_FOUND, or TS_ERR_BUFFER if the name does not fit.
 */
TS_API int32_t NLS1_GetLanguageName(int32_t id, char* buffer, int32_t size);
TS_API int32_t NLS1_GetTerritoryName(int32_t id, char* buffer, int32_t size);
TS_API int32_t NLS1_GetCodepageName(int32_t id, char* buffer, int32_t size);
TS_API int32_t NLS1_GetSortName(int32_t id, char* buffer, int32_t size);

/** @} */

/**
 * @name Translation
 * @{
 */

/**
 * Translates text between two code pages that are given by their ids; 1200 is 16-bit Unicode in the
 * byte order of the machine. No locale is needed.
 *
 * What does not fit is left out with TS_ERR_BUFFER, and the result is what was written. The size
 * does not bound all that is written. Room to give beyond it:
 *
 * - 1200 to 1200: the whole input, whatever the size, and 2 bytes for a terminator.
 * - A code page of several bytes to 1200: `size` elements and one more, since the size counts
 *   elements there.
 * - A code page of several bytes to one of single bytes: one byte more than the size.
 * - Any to 1200 with NLS1_OPT_PAD_BLANKS: `size` elements, which are twice as many bytes.
 *
 * From 1200 to single bytes half of the size is used where the input has more bytes than that.
 *
 * @param output, size in bytes, or with TS_OPT_CHAR_COUNT in characters.
 * @param input, length in bytes, or with TS_OPT_CHAR_COUNT in characters; negative for up to the
 *        terminator, and then the output has one if all was translated and there is room.
 * @param consumed receives the bytes of the input that were translated, or with TS_OPT_CHAR_COUNT
 *        the characters of the output; not written if a code page is not found, if a text is null
 *        that is needed, or if a target of 1200 has a size below 2.
 * @param options TS_OPT_CHAR_COUNT; TS_OPT_TERMINATE: a terminator, for which room is kept;
 *        NLS1_OPT_BLANKS_MAY_GO: blanks alone that do not fit are no error; NLS1_OPT_PAD_BLANKS:
 *        unused room is filled with blanks.
 * @param error receives 0, TS_ERR_ARGUMENT, TS_ERR_CODEPAGE or TS_ERR_NOT_FOUND for a code page,
 *        TS_ERR_BUFFER.
 * @return the bytes written, or with TS_OPT_CHAR_COUNT the characters; -1 for an error before
 *         anything was translated.
 */
TS_API int32_t NLS1_TranslateString(uint32_t targetCodePage, void* output, int32_t size,
                                    uint32_t sourceCodePage, const void* input, int32_t length,
                                    uint32_t* consumed, uint32_t options, uint32_t* error);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
