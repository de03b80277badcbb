/**
 * @file msglocal.h
 * The language of the library's messages.
 *
 * Slots with texts of their own: 0 Spanish, 1 French, 2 Portuguese (Brazil), 3 Portuguese (Portugal), 4 Catalan,
 * 5 Italian, 6 Spanish (Mexico), 7 Spanish (Argentina), 8 English, 11 Romanian, 12 Chinese (simplified), 13 German,
 * 18 Russian, 24 Spanish (elsewhere in America), 31 Polish, 33 Turkish, 39 Japanese.
 *
 * Slots that have a name but no texts: 9 Galician, which gives the Spanish ones; 10 Bulgarian, 25 Thai, 26 Czech,
 * 27 Croatian, 29 Slovenian and 30 Hungarian, which give the English ones. The rest up to 40 are reserved: 14 to 17
 * and 19 to 23 give Spanish, the others English.
 */
#ifndef LUMODIR_MSGLOCAL_H
#define LUMODIR_MSGLOCAL_H

#include "../lumodir_base.h"

LUMODIR_EXTERN_C_INICIO

/** The slots that have a name. English is the default when the catalogue lacks the user's language. */
enum {
    MSGLOCAL_ESPANYOL = 0,
    MSGLOCAL_FRANCES = 1,
    MSGLOCAL_PORTUGUES_BRASIL = 2,
    MSGLOCAL_PORTUGUES_PORTUGAL = 3,
    MSGLOCAL_CATALAN = 4,
    MSGLOCAL_ITALIANO = 5,
    MSGLOCAL_ESPANYOL_MEXICO = 6,
    MSGLOCAL_ESPANYOL_ARGENTINA = 7,
    MSGLOCAL_INGLES = 8,
    MSGLOCAL_GALLEGO = 9,
    MSGLOCAL_BULGARO = 10,
    MSGLOCAL_RUMANO = 11,
    MSGLOCAL_CHINO_SIMPLIFICADO = 12,
    MSGLOCAL_ALEMAN = 13,
    MSGLOCAL_RUSO = 18,
    MSGLOCAL_ESPANYOL_AMERICA = 24,
    MSGLOCAL_TAILANDES = 25,
    MSGLOCAL_CHECO = 26,
    MSGLOCAL_CROATA = 27,
    MSGLOCAL_ESLOVENO = 29,
    MSGLOCAL_HUNGARO = 30,
    MSGLOCAL_POLACO = 31,
    MSGLOCAL_TURCO = 33,
    MSGLOCAL_JAPONES = 39
};

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
