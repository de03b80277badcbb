// The platform door (plataforma.hpp) on Windows.
#include "companions/plataforma.hpp"

#include <algorithm>
#include <cstring>

#include "companions/respuesta_entera.hpp"
#include "companions/sistema.hpp"

namespace interno::plataforma {
namespace {

// The conversion calls count in int. Nothing the library handles is longer; what is, is cut.
int i_longitud(std::size_t longitud) noexcept {
    constexpr std::size_t maxima = 0x7FFFFFFF;
    return static_cast<int>(longitud < maxima ? longitud : maxima);
}

// Consoles refuse more than 64 KB at once, some even less; a redirected stream gets stretches that fit its buffer.
constexpr std::size_t tramo_de_consola = 8192;  // units
constexpr std::size_t tramo_de_flujo = 128;

// The first stretch of a text, which cuts no pair in two.
vista_w i_tramo(vista_w texto, std::size_t mayor) noexcept {
    std::size_t tramo = std::min(texto.size(), mayor);
    if (tramo < texto.size() && (texto[tramo - 1] & 0xFC00) == 0xD800) {
        --tramo;
    }
    return texto.substr(0, tramo);
}

// Writes `texto` to a console or, in UTF-8, to a redirected stream.
void i_escribe(HANDLE salida, vista_w texto) noexcept {
    DWORD escritos;
    const bool consola = sistema.GetConsoleMode(salida, &escritos) != FALSE;
    char bytes[3 * tramo_de_flujo];  // a UTF-16 unit takes at most three
    while (!texto.empty()) {
        const vista_w tramo = i_tramo(texto, consola ? tramo_de_consola : tramo_de_flujo);
        const auto unidades = static_cast<DWORD>(tramo.size());
        if (consola) {
            sistema.WriteConsoleW(salida, tramo.data(), unidades, &escritos, nullptr);
        } else {
            const int largo = ::WideCharToMultiByte(CP_UTF8, 0, tramo.data(), static_cast<int>(unidades),
                                                    bytes, sizeof bytes, nullptr, nullptr);
            ::WriteFile(salida, bytes, static_cast<DWORD>(largo), &escritos, nullptr);
        }
        texto.remove_prefix(tramo.size());
    }
}

// Length of the character that `texto` begins with, as its first byte tells.
std::size_t i_bytes_de_caracter(vista_a texto) noexcept {
    const auto primero = static_cast<unsigned char>(texto.front());
    std::size_t bytes = 1;
    if (es_utf8()) {
        bytes = primero >= 0xF0 ? 4 : primero >= 0xE0 ? 3 : primero >= 0xC0 ? 2 : 1;
    } else if (::IsDBCSLeadByteEx(pagina_de_codigos, primero)) {
        bytes = 2;
    }
    return bytes < texto.size() ? bytes : texto.size();
}

// Character by character: what is not valid becomes U+FFFD. Left to itself the system would put the code page's own
// default there, a character like any other, and Wine, at the end of UTF-8, takes ASCII for the rest of what is cut short.
std::size_t i_a_utf16_con_sustitutos(vista_a texto, wchar_t* destino, std::size_t sitio) noexcept {
    constexpr wchar_t sustituto = 0xFFFD;
    std::size_t unidades = 0;
    while (!texto.empty()) {
        wchar_t convertido[2];
        int bytes = static_cast<int>(i_bytes_de_caracter(texto));
        int largo = ::MultiByteToWideChar(pagina_de_codigos, MB_ERR_INVALID_CHARS, texto.data(), bytes,
                                          convertido, 2);
        if (largo <= 0) {
            convertido[0] = sustituto;  // the byte behind a bad lead byte may be valid alone
            largo = bytes = 1;
        }
        for (int i = 0; i < largo; ++i, ++unidades) {
            if (unidades < sitio) {
                destino[unidades] = convertido[i];
            }
        }
        texto.remove_prefix(static_cast<std::size_t>(bytes));
    }
    return unidades;
}

// One character of the code page in another case; it stays as it is where its counterpart is not in the code
// page (the upper case of the micro sign is a Greek letter, for example) or takes another number of bytes.
// Answers whether the bytes are a character at all.
bool i_convierte_caracter(char* caracter, int bytes, DWORD caja) noexcept {
    wchar_t unidades[2];
    wchar_t convertidas[2];
    const int num =
        ::MultiByteToWideChar(pagina_de_codigos, MB_ERR_INVALID_CHARS, caracter, bytes, unidades, 2);
    if (num <= 0) {
        return false;
    }
    if (::LCMapStringEx(LOCALE_NAME_INVARIANT, caja, unidades, num, convertidas, 2, nullptr, nullptr, 0) !=
        num) {
        return true;  // GCOVR_EXCL_LINE: no version of Windows is known to do so
    }
    char resultado[8];
    BOOL falta = FALSE;
    const bool utf8 = es_utf8();  // it holds every character, and admits neither flags nor the question
    const int largo =
        ::WideCharToMultiByte(pagina_de_codigos, utf8 ? 0 : WC_NO_BEST_FIT_CHARS, convertidas, num, resultado,
                              sizeof resultado, nullptr, utf8 ? nullptr : &falta);
    if (largo == bytes && !falta) {
        std::memcpy(caracter, resultado, static_cast<std::size_t>(bytes));
    }
    return true;
}

void i_convierte_caja(char* texto, std::size_t longitud, char primera, DWORD caja) noexcept {
    for (std::size_t i = 0; i < longitud;) {
        if (static_cast<unsigned char>(texto[i]) < 0x80) {
            const bool cambia = texto[i] >= primera && texto[i] <= primera + ('z' - 'a');
            texto[i] = static_cast<char>(cambia ? texto[i] ^ ('a' ^ 'A') : texto[i]);
            ++i;
        } else {
            const std::size_t bytes = i_bytes_de_caracter(vista_a(texto + i, longitud - i));
            // The byte behind a bad lead byte may be a character of its own.
            i += i_convierte_caracter(texto + i, static_cast<int>(bytes), caja) ? bytes : 1;
        }
    }
}

}  // namespace

void (*&duerme_ms)(unsigned long) = sistema.duerme_ms;
void (*&termina_proceso)() = sistema.termina_proceso;

unsigned pagina_de_codigos = CP_ACP;

bool es_utf8() noexcept {
    return pagina_de_codigos == CP_UTF8 || (pagina_de_codigos == CP_ACP && ::GetACP() == CP_UTF8);
}

bool bytes_iniciales(bool (&iniciales)[256]) noexcept {
    CPINFO pagina;
    if (es_utf8() || !::GetCPInfo(pagina_de_codigos, &pagina) || pagina.LeadByte[0] == 0) {
        return false;
    }
    // Ranges, each with its first and its last byte, up to one of zeros.
    for (int i = 0; i + 1 < MAX_LEADBYTES && pagina.LeadByte[i] != 0; i += 2) {
        for (unsigned byte = pagina.LeadByte[i]; byte <= pagina.LeadByte[i + 1]; ++byte) {
            iniciales[byte] = true;
        }
    }
    return true;
}

bool es_caracter_doble(char primero, char segundo) noexcept {
    const char pareja[] = {primero, segundo};
    wchar_t unidades[2];
    return ::MultiByteToWideChar(pagina_de_codigos, MB_ERR_INVALID_CHARS, pareja, 2, unidades, 2) > 0;
}

std::size_t ansi_a_utf16(vista_a texto, wchar_t* destino, std::size_t sitio) noexcept {
    const int longitud = i_longitud(texto.size());
    if (longitud == 0) {
        return 0;
    }
    constexpr DWORD opciones = MB_ERR_INVALID_CHARS;
    int unidades = 0;
    if (sitio > 0) {
        unidades = ::MultiByteToWideChar(pagina_de_codigos, opciones, texto.data(), longitud, destino,
                                         i_longitud(sitio));
    }
    if (unidades == 0) {
        unidades = ::MultiByteToWideChar(pagina_de_codigos, opciones, texto.data(), longitud, nullptr, 0);
    }
    return unidades > 0 ? static_cast<std::size_t>(unidades)
                        : i_a_utf16_con_sustitutos(texto, destino, sitio);
}

std::size_t utf16_a_ansi(vista_w texto, char* destino, std::size_t sitio) noexcept {
    const int longitud = i_longitud(texto.size());
    if (longitud == 0) {
        return 0;
    }
    // UTF-8 as the active code page admits no flags.
    const DWORD opciones = es_utf8() ? 0 : WC_NO_BEST_FIT_CHARS;
    if (sitio > 0) {
        const int escritos = ::WideCharToMultiByte(pagina_de_codigos, opciones, texto.data(), longitud,
                                                   destino, i_longitud(sitio), nullptr, nullptr);
        if (escritos > 0) {
            return static_cast<std::size_t>(escritos);
        }
    }
    return static_cast<std::size_t>(::WideCharToMultiByte(pagina_de_codigos, opciones, texto.data(), longitud,
                                                          nullptr, 0, nullptr, nullptr));
}

void minusculas_ansi(char* texto, std::size_t longitud) noexcept {
    i_convierte_caja(texto, longitud, 'A', LCMAP_LOWERCASE);
}

void mayusculas_ansi(char* texto, std::size_t longitud) noexcept {
    i_convierte_caja(texto, longitud, 'a', LCMAP_UPPERCASE);
}

cadena_w variable_de_entorno(const wchar_t* nombre) {
    const conserva_ultimo_error conserva;
    DWORD codigo = ERROR_SUCCESS;
    cadena_w valor = i_respuesta_entera<wchar_t>([&](wchar_t* destino, DWORD sitio) {
        ::SetLastError(ERROR_SUCCESS);
        const DWORD longitud = sistema.GetEnvironmentVariableW(nombre, destino, sitio);
        codigo = ::GetLastError();
        return longitud;
    });
    // Only the code tells an empty value from one that is not set.
    return valor.es_nula() && codigo == ERROR_SUCCESS ? cadena_w(vista_w()) : std::move(valor);
}

void escribe_error_estandar(vista_w linea) noexcept {
    const conserva_ultimo_error conserva;
    HANDLE salida = ::GetStdHandle(STD_ERROR_HANDLE);
    if (salida != nullptr && salida != INVALID_HANDLE_VALUE) {
        i_escribe(salida, linea);
    }
}

void escribe_depurador(const wchar_t* linea) noexcept {
    const conserva_ultimo_error conserva;
    ::OutputDebugStringW(linea);
}

std::uint16_t idioma_del_usuario() noexcept {
    return ::GetUserDefaultUILanguage();
}

cadena_w texto_de_codigo(unsigned long codigo, std::uint16_t idioma) {
    constexpr DWORD como = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    constexpr DWORD mayor_texto = 32'767;  // units, terminator included: the longest that the call gives
    wchar_t corto[512];
    DWORD largo =
        sistema.FormatMessageW(como, nullptr, codigo, idioma, corto, sizeof corto / sizeof *corto, nullptr);
    const wchar_t* texto = corto;
    vector_interno<wchar_t> entero;
    if (largo == 0 && ::GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
        entero.reserva_sitio(mayor_texto);
        largo = sistema.FormatMessageW(como, nullptr, codigo, idioma, entero.data(), mayor_texto, nullptr);
        texto = entero.data();
    }
    const vista_w linea =
        vista_w(texto, largo).substr(0, vista_w(texto, largo).find_last_not_of(L"\r\n ") + 1);
    return linea.empty() ? cadena_w() : cadena_w(linea);
}

}  // namespace interno::plataforma
