/**
 * @file msglocal.h
 * The language of the library's messages.
 *
 * Slots: 0 Spanish, 1 French, 2 Portuguese (Brazil), 3 Portuguese (Portugal), 4 Catalan, 5 Italian, 6 and 7
 * regional Spanish, 8 English, 9 Galician, 10 Bulgarian, 11 Romanian, 12 Chinese (simplified), 13 German, 18
 * Russian, 24 regional Spanish, 25 Thai, 26 Czech, 27 Croatian, 29 Slovenian, 30 Hungarian, 31 Polish, 33
 * Turkish, 39 Japanese. The rest up to 40 are reserved. A slot without a text of its own gives the Spanish or
 * the English one: Spanish for 6, 7, 9, 14 to 17, 19 to 24, and English for the rest.
 */
#ifndef LUMODIR_MSGLOCAL_H
#define LUMODIR_MSGLOCAL_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/** Slot of Spanish, and slot of English, the default when the catalogue lacks the user's language. */
enum { MSGLOCAL_ESPANYOL = 0, MSGLOCAL_INGLES = 8 };

/**
 * Sets the language of the messages, at start-up. By default it is that of the user's display language.
 *
 * @param slot  0 to 40. A larger one is reported and changes nothing.
 */
LUMODIR_API void msglocal_establece_idioma(unsigned long slot);

/**
 * Gives the language of the messages.
 *
 * @return Slot, 0 to 40.
 */
LUMODIR_API unsigned long msglocal_dame_idioma(void);

LUMODIR_EXTERN_C_FIN

#endif
