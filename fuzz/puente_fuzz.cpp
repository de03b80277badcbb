// The bridge between the flavours, in each code page, some with bytes that mean nothing: conversions against the platform's own with room to spare, and every 8-bit twin that crosses it against the wide function of the
// converted text. Lines: the code page (0 is that of the input, 1 UTF-8), 8-bit text, wide text.
#include "frame/puente.hpp"

#include <algorithm>

#include "apoyo/paginas.hpp"
#include "arnes.hpp"
#include "cdir.h"
#include "companions/arr.hpp"
#include "companions/caracteres.hpp"
#include "companions/plataforma.hpp"
#include "paths/path_correcto.hpp"
#include "paths/split_makepath.hpp"

using namespace arnes;
using interno::vista_a;
using interno::vista_w;

namespace {

constexpr unsigned utf8 = 65001;

texto_w convertido(const texto_a& bytes) {
    texto_w unidades(bytes.size() + 1, L'#');
    const std::size_t longitud = interno::plataforma::ansi_a_utf16(bytes, unidades.data(), unidades.size());
    EXIGE(longitud <= bytes.size() && unidades[longitud] == L'#');
    return unidades.substr(0, longitud);
}

texto_a convertido(const texto_w& unidades) {
    texto_a bytes(3 * unidades.size() + 1, '#');
    const std::size_t longitud =
        interno::plataforma::utf16_a_ansi(vista_w(unidades), bytes.data(), bytes.size());
    EXIGE(longitud <= 3 * unidades.size() && bytes[longitud] == '#');
    return bytes.substr(0, longitud);
}

void compara_hacia_utf16(const texto_a& bytes) {
    const texto_w esperado = convertido(bytes);
    const justo<char> sin_fin(bytes, false);
    const justo<char> con_fin(bytes);
    EXIGE_IGUAL(texto_w(interno::utunicode_ANSI_a_UNICODE(sin_fin.ver()).ver()), esperado);
    EXIGE_IGUAL(toma(interno::utunicode_ANSI_a_UNICODE(con_fin.datos()).suelta()), esperado);
    // The temporary form has room of its own for short texts only.
    const interno::utf16_temporal temporal(sin_fin.ver());
    EXIGE_IGUAL(texto_w(temporal.ver()), esperado);
    EXIGE_IGUAL(texto_w(temporal.c_str()), esperado);
    EXIGE_IGUAL(texto_w(interno::utf16_temporal(con_fin.datos()).c_str()), esperado);
    // What the code page can say comes back as it was; double-byte ones write some characters in two ways.
    if (esperado.find(L'\xFFFD') == texto_w::npos &&
        interno::i_escritura() != interno::escritura::de_dos_bytes) {
        EXIGE_IGUAL(texto_a(interno::utunicode_UNICODE_a_ANSI(vista_w(esperado)).ver()), bytes);
    }
}

void compara_hacia_8_bits(const texto_w& unidades) {
    const texto_a esperado = convertido(unidades);
    const justo<wchar_t> sin_fin(unidades, false);
    const justo<wchar_t> con_fin(unidades);
    EXIGE_IGUAL(texto_a(interno::utunicode_UNICODE_a_ANSI(sin_fin.ver()).ver()), esperado);
    EXIGE_IGUAL(toma(interno::utunicode_UNICODE_a_ANSI(con_fin.datos()).suelta()), esperado);
    // No look-alikes: a separator or a dot comes only of its own character.
    const modelos::texto_c caracteres = modelos::en_caracteres(esperado);
    for (const char c : {'\\', '/', ':', '.', '*'}) {
        EXIGE_IGUAL(std::count(caracteres.begin(), caracteres.end(), static_cast<char32_t>(c)),
                    std::count(unidades.begin(), unidades.end(), static_cast<wchar_t>(c)));
    }
    auto lista = interno::objeto<ArrCADENA_u>::crea();
    lista->anade(interno::cadena_w(vista_w(unidades)));
    lista->anade(interno::cadena_w(vista_w()));
    const auto corta = interno::utunicode_cadenas_UNICODE_a_ANSI_destruyendo(std::move(lista));
    EXIGE_IGUAL(corta->num(), 2);
    EXIGE_IGUAL(texto_a(corta->ver(0)), esperado);
    EXIGE(corta->ver(1).empty());
}

// Answer, reports and warnings of a twin are those of the wide function.
template <class Gemela, class Ancha>
void compara_gemela(Gemela gemela, Ancha ancha, const char* que) {
    const auto dado = gemela();
    const std::vector<std::string> informes_dados = informes();
    const std::vector<std::string> avisos_dados = avisos();
    const auto esperado = ancha();
    exige_igual(dado, esperado, que, __LINE__);
    exige_igual(informes_dados, informes(), que, __LINE__);
    exige_igual(avisos_dados, avisos(), que, __LINE__);
}

int en_numero(const interno::veredicto& juicio) {
    return (juicio.correcto ? 1 : 0) + (juicio.es_unc ? 2 : 0);
}

void compara_gemelas(const texto_a& bytes) {
    const justo<char> corto(bytes);
    const justo<wchar_t> ancho(convertido(bytes));
    for (unsigned short mostrar = 0; mostrar < 2; ++mostrar) {
        compara_gemela([&] { return cdir_path_valido(corto, mostrar); },
                       [&] { return cdir_path_valido_UNICODE(ancho, mostrar); }, "cdir_path_valido");
    }
    compara_gemela([&] { return cdir_nombre_base_valido(corto); },
                   [&] {
                       const justo<wchar_t> suyo(texto_w(ancho.ver()));
                       return cdir_nombre_base_valido_UNICODE(suyo.datos());
                   },
                   "cdir_nombre_base_valido");
    compara_gemela([&] { return cdir_extension_valida(corto); },
                   [&] { return cdir_extension_valida_UNICODE(ancho); }, "cdir_extension_valida");
    compara_gemela([&] { return en_numero(interno::i_path_correcto_con_comodines(corto.ver())); },
                   [&] { return en_numero(interno::i_path_correcto_con_comodines_UNICODE(ancho.ver())); },
                   "i_path_correcto_con_comodines");
}

// A wide function that gives a text, through the bridge: converted there and back.
void compara_puente_de_textos(const texto_a& bytes) {
    const justo<char> corto(bytes);
    const texto_w ancho = convertido(bytes);
    EXIGE_IGUAL(toma(interno::puente<cdir_dame_nombre_base_valido_UNICODE>(static_cast<const char*>(corto))),
                convertido(modelos::reparado(ancho)));
    EXIGE_IGUAL(
        toma(interno::puente<cdir_concatena_directorios_UNICODE>(static_cast<const char*>(corto),
                                                                 static_cast<const char*>(corto))),
        convertido(toma(cdir_concatena_directorios_UNICODE(justo<wchar_t>(ancho), justo<wchar_t>(ancho)))));
}

// Functions with an 8-bit body of their own read the text in characters as the conversion does: the pieces converted
// are the pieces of the converted text.
void compara_cortes(const texto_a& bytes) {
    const texto_w unidades = convertido(bytes);
    if (unidades.find(L'\xFFFD') != texto_w::npos) {
        return;  // bytes that differ and mean nothing have become one character
    }
    // A drive is one character and ':'. What takes two units in UTF-16 is none there.
    if (std::adjacent_find(unidades.begin(), unidades.end(), [](wchar_t letra, wchar_t siguiente) {
            return (letra & 0xFC00) == 0xDC00 && siguiente == L':';
        }) != unidades.end()) {
        return;
    }
    const justo<char> corto(bytes);
    const justo<wchar_t> ancho(unidades);
    char* cortas[4] = {};
    wchar_t* anchas[4] = {};
    cdir_splitpath_con_comprobacion(corto, &cortas[0], &cortas[1], &cortas[2], &cortas[3]);
    const std::vector<std::string> avisos_dados = avisos();
    const bool con_informes = !informes().empty();
    cdir_splitpath_con_comprobacion_UNICODE(ancho, &anchas[0], &anchas[1], &anchas[2], &anchas[3]);
    EXIGE_IGUAL(avisos_dados, avisos());
    const bool ancha_con_informes = !informes().empty();
    for (int i = 0; i < 4; ++i) {
        const texto_w de_la_corta = convertido(toma(cortas[i]));
        const texto_w de_la_ancha = toma(anchas[i]);
        if (!con_informes && !ancha_con_informes) {  // a share that lacks its name differs on purpose
            EXIGE_IGUAL(de_la_corta, de_la_ancha);
        }
    }
}

}  // namespace

void arnes::prueba(entrada& e) {
    const apoyo::en_pagina p(e.numero() % 2 == 1 ? utf8 : e.pagina());
    const texto_a bytes = e.bytes();
    const texto_w unidades = e.unidades();
    compara_hacia_utf16(bytes);
    compara_hacia_8_bits(unidades);
    compara_gemelas(bytes);
    compara_puente_de_textos(bytes);
    compara_cortes(bytes);
    EXIGE(interno::utf16_temporal(static_cast<const char*>(nullptr)).c_str() == nullptr);
}
