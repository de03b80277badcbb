// See arnes.hpp.
#include "arnes.hpp"

#include <cstdio>
#include <cstdlib>

#include "apoyo/paginas.hpp"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "companions/lumospy.h"
#include "companions/lumospy.hpp"
#include "companions/lumostr.h"
#include "companions/msglocal.h"
#include "companions/registro_mensaje.hpp"
#include "companions/widestr.h"

namespace arnes {
namespace {

std::vector<std::string> g_informes;
std::vector<std::string> g_avisos;
unsigned g_pagina = 0;  // that of the whole run, where one was asked for
bool g_cortos = false;  // no long text in the whole run

constexpr std::size_t longitud_corta = 300;  // past the limit of a component
constexpr std::size_t longitud_corriente = 600;
constexpr std::size_t longitud_maxima = 70000;  // beyond the 65,535 units that the repair of names looks at
constexpr char marca_larga = '\x0C';
constexpr char primera_pagina = '\x10';
constexpr char repite_pocas = '\x0E';
constexpr char repite_muchas = '\x0F';
constexpr std::size_t cada_una_de_muchas = 41;  // 255 times that passes the limit of a path

std::string i_escapado(std::size_t unidad) {
    char escape[16];
    if (unidad >= ' ' && unidad < 0x7F) {
        std::snprintf(escape, sizeof escape, "%c", static_cast<int>(unidad));
    } else {
        std::snprintf(escape, sizeof escape, "{%zX}", unidad);
    }
    return escape;
}

template <class C>
std::string i_como_se_ve(interno::vista<C> texto) {
    constexpr std::size_t bastante = 300;
    std::string visto = "[";
    for (const C c : texto.substr(0, bastante)) {
        visto += i_escapado(sizeof(C) == 1 ? static_cast<unsigned char>(c) : static_cast<unsigned short>(c));
    }
    return visto + (texto.size() > bastante ? "...](" + std::to_string(texto.size()) + ")" : "]");
}

template <class T>
std::string i_como_se_ven(const std::vector<T>& textos) {
    std::string vistos = std::to_string(textos.size());
    for (const T& texto : textos) {
        vistos += " " + como_se_ve(texto);
    }
    return vistos;
}

void i_recibe_informe(const char* expresion, const char* etiqueta, unsigned long linea,
                      const wchar_t* detalle, void*) {
    EXIGE(etiqueta != nullptr && *etiqueta != '\0' && linea > 0);
    // The detail must be readable to its end. The longest is a path composed of four arguments. A long name with as many
    // forbidden characters is told as often as it has them: the first ones are looked at.
    constexpr std::size_t miradas = 100;
    EXIGE(detalle == nullptr || g_informes.size() >= miradas ||
          interno::a_vista(detalle).size() < 5 * longitud_maxima);
    g_informes.emplace_back(expresion);
}

void i_recibe_aviso(const wchar_t* texto, void*) {
    g_avisos.push_back(apoyo::u8(texto));
}

template <class T>
std::vector<T> i_vacia(std::vector<T>& lista) {
    std::vector<T> antes;
    antes.swap(lista);
    return antes;
}

}  // namespace

entrada::entrada(const std::uint8_t* datos, std::size_t tamanyo)
    : resto_(reinterpret_cast<const char*>(datos), tamanyo), es_larga_(resto_.starts_with(marca_larga)) {
    resto_.remove_prefix(es_larga_ ? 1 : 0);
    es_larga_ = es_larga_ && !g_cortos;
    if (!resto_.empty() && resto_[0] >= primera_pagina &&
        resto_[0] < primera_pagina + static_cast<int>(std::size(apoyo::paginas))) {
        pagina_ = apoyo::paginas[resto_[0] - primera_pagina];
        resto_.remove_prefix(1);
    }
    pagina_ = g_pagina != 0 ? g_pagina : pagina_;
}

// Repetitions carried out; a character is repeated with all its bytes.
texto_a entrada::i_expandida(std::string_view linea, bool con_terminadores) const {
    const std::size_t maxima = es_larga_ ? longitud_maxima : g_cortos ? longitud_corta : longitud_corriente;
    texto_a texto;
    std::size_t ultimo = 0;  // where the last character begins
    for (std::size_t i = 0; i < linea.size() && texto.size() < maxima; ++i) {
        const char c = linea[i];
        if ((c == repite_pocas || c == repite_muchas) && i + 1 < linea.size()) {
            const auto n = static_cast<unsigned char>(linea[++i]);
            const texto_a caracter = texto.substr(ultimo);
            std::size_t veces = c == repite_pocas ? n : n * cada_una_de_muchas;
            for (; veces > 0 && texto.size() < maxima; --veces) {
                texto += caracter;
            }
        } else if (c != '\0' || con_terminadores) {
            if ((c & 0xC0) != 0x80) {
                ultimo = texto.size();
            }
            texto.push_back(c);
        }
    }
    return texto;
}

std::string_view entrada::i_linea() {
    const std::size_t fin = resto_.find('\n');
    const std::string_view linea = resto_.substr(0, fin);
    resto_.remove_prefix(fin == std::string_view::npos ? resto_.size() : fin + 1);
    return linea;
}

texto_a entrada::bytes(bool con_terminadores) {
    return i_expandida(i_linea(), con_terminadores);
}

texto_w entrada::unidades(bool con_terminadores) {
    return en_unidades(bytes(con_terminadores));
}

std::optional<texto_a> entrada::bytes_o_null() {
    const std::string_view linea = i_linea();
    return linea == "NULL" ? std::nullopt : std::optional<texto_a>(i_expandida(linea, false));
}

unsigned long entrada::numero() {
    unsigned long valor = 0;
    for (const char c : i_linea().substr(0, 9)) {
        valor = c >= '0' && c <= '9' ? valor * 10 + static_cast<unsigned long>(c - '0') : valor;
    }
    return valor;
}

texto_w en_unidades(const texto_a& bytes) {
    texto_w unidades = apoyo::en_utf16(bytes);
    // Ill-formed UTF-8 can give a terminator.
    std::erase_if(unidades, [&](wchar_t c) { return c == 0 && bytes.find('\0') == texto_a::npos; });
    return unidades;
}

texto_w toma(wchar_t* texto) {
    EXIGE(texto != nullptr);
    texto_w resultado = texto;
    widestr_nousar_destruye(&texto, "fuzz", 1);
    return resultado;
}

texto_a toma(char* texto) {
    EXIGE(texto != nullptr);
    texto_a resultado = texto;
    lumostr_destruye(&texto);
    return resultado;
}

std::vector<std::string> informes() {
    return i_vacia(g_informes);
}

std::vector<std::string> avisos() {
    return i_vacia(g_avisos);
}

std::string como_se_ve(interno::vista_w texto) {
    return i_como_se_ve(texto);
}
std::string como_se_ve(interno::vista_a texto) {
    return i_como_se_ve(texto);
}
std::string como_se_ve(const std::vector<std::string>& textos) {
    return i_como_se_ven(textos);
}
std::string como_se_ve(const std::vector<texto_w>& textos) {
    return i_como_se_ven(textos);
}

void falla(const char* que, int linea, const std::string& dado, const std::string& esperado) {
    std::fprintf(stderr, "line %d: %s\n  given:    %s\n  expected: %s\n", linea, que, dado.c_str(),
                 esperado.c_str());
    std::abort();
}

}  // namespace arnes

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    if (const char* pagina = std::getenv("LUMODIR_PAGINA")) {
        arnes::g_pagina = static_cast<unsigned>(std::atoi(pagina));
    }
    arnes::g_cortos = std::getenv("LUMODIR_CORTOS") != nullptr;
    error_interno_establece_receptor(arnes::i_recibe_informe, nullptr);
    lmaviso_establece_receptor(arnes::i_recibe_aviso, nullptr);
    msglocal_establece_idioma(interno::ranura_ingles);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t tamanyo) {
    const unsigned long long vivos = lumospy_bloques_vivos();
    const unsigned long long internos = interno::i_bloques_internos_vivos();
    arnes::entrada e(datos, tamanyo);
    {
        const apoyo::en_pagina p(e.pagina());
        arnes::prueba(e);
    }
    EXIGE_IGUAL(lumospy_bloques_vivos(), vivos);
    EXIGE_IGUAL(interno::i_bloques_internos_vivos(), internos);
    EXIGE_IGUAL(arnes::informes(), std::vector<std::string>());
    EXIGE_IGUAL(arnes::avisos(), std::vector<std::string>());
    return 0;
}
