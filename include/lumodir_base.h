/**
 * @file lumodir_base.h
 * What every header of the library stands on: linkage, truth values and the conventions below.
 *
 * Text. 8-bit text (`char`) is in the process's active code page; wide text (`wchar_t`, 16 bits) is UTF-16
 * and its lengths count UTF-16 units. A wide function usually ends in `_UNICODE` or `_u`. A character that
 * the code page lacks becomes its default character; bytes that are not valid in it become U+FFFD. 8-bit text is
 * read in characters as the system converts it: in a double-byte code page a second byte 0x5C is no separator.
 *
 * Twins. "8-bit flavour." before a function means that it does what the one above it does, with 8-bit texts and
 * otherwise the same arguments, reports and answer ("without its answer": it answers nothing).
 *
 * Ownership. A returned string is new unless its function says "borrowed". Wide ones are freed with
 * widestr_nousar_destruye(), 8-bit ones with lumostr_destruye(); lists and records with the function named
 * there. A string that a function takes over must be of the same kind.
 *
 * Reported and shown. "Reported" means that an internal error, with the failed expression quoted here, is handed to
 * the receiver of error_interno_establece_receptor(); the function then goes on, never touches memory through
 * a NULL, and returns its failure value (0, or a new empty string or list). "Shown" means that a localized text is
 * handed to the receiver of lmaviso_establece_receptor(); unless stated otherwise nothing is shown in service
 * mode. Messages are given by their number and their English text where they are used.
 *
 * Threads. The library has no locks: settings are made once at start-up, the rest may be called from any
 * thread as long as no object is shared.
 *
 * Exceptions. No C++ exception leaves a function. What a host's own function (a receiver, a comparison, a
 * callback) throws ends at its call, which then counts as "no" (0), and no block of the library is lost: C++
 * exceptions of any compiler, those of other languages, and whatever a program raises by RaiseException() with a
 * code of its own. The host's functions are unwound; an object that an exception of another compiler carries is not
 * destroyed, and a host that has a C++ runtime of its own may go on finding it in std::uncaught_exceptions(). Faults, such as an access violation, go on to whoever handles them.
 */
#ifndef LUMODIR_BASE_H
#define LUMODIR_BASE_H

#include <stddef.h> /* wchar_t and size_t in C */

#if defined(LUMODIR_API)
/* The build tells it. */
#elif defined(_WIN32) && defined(LUMODIR_CONSTRUYE)
#define LUMODIR_API __declspec(dllexport)
#elif defined(_WIN32) && !defined(LUMODIR_ESTATICO)
#define LUMODIR_API __declspec(dllimport)
#else
#define LUMODIR_API
#endif

#ifdef __cplusplus
#define LUMODIR_EXTERN_C_INICIO extern "C" {
#define LUMODIR_EXTERN_C_FIN }
#else
#define LUMODIR_EXTERN_C_INICIO
#define LUMODIR_EXTERN_C_FIN
#endif

/**
 * The version of these headers; that of the DLL which a program has loaded stands in the DLL's version resource. A
 * program built against 1.2 runs with any 1.x from 1.2 on: see the page "What may change".
 */
#define LUMODIR_VERSION_MAJOR 1 /**< Another number: programs have to be built anew, perhaps changed. */
#define LUMODIR_VERSION_MINOR 0 /**< A higher number: something was added. */
#define LUMODIR_VERSION_PATCH 0 /**< A higher number: something was mended. */

/** The version as one number that can be compared: 1.2.3 is 10203. */
#define LUMODIR_VERSION_NUMBER (LUMODIR_VERSION_MAJOR * 10000 + LUMODIR_VERSION_MINOR * 100 + LUMODIR_VERSION_PATCH)
/** The version as text: "1.2.3". */
#define LUMODIR_VERSION_STRING "1.0.0"

/** Truth values travel as `unsigned short`. Compare with CIERTO: any other value counts as false. */
#define CIERTO 1
#define FALSO 0 /**< The other truth value. */

#endif
