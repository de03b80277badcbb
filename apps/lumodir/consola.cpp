#include "consola.hpp"

#include <cstdlib>

#include "frases.hpp"
#include "ordenes.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"

namespace mando {

namespace {

constexpr size_t lleno = 8192;  // units that are held back before they are written unasked

unsigned short i_atributos(estilo como, unsigned short propios) {
    constexpr unsigned short fondo = 0xF0;
    const auto con = [&](unsigned color) { return static_cast<unsigned short>((propios & fondo) | color); };
    switch (como) {
        case estilo::titulo:
            return static_cast<unsigned short>(propios | FOREGROUND_INTENSITY);
        case estilo::bueno:
            return con(FOREGROUND_GREEN);
        case estilo::malo:
            return con(FOREGROUND_RED | FOREGROUND_INTENSITY);
        case estilo::aviso:
            return con(FOREGROUND_RED | FOREGROUND_GREEN);
        case estilo::tenue:
            return con(FOREGROUND_BLUE | FOREGROUND_GREEN);
        case estilo::normal:
            break;
    }
    return propios;
}

// Control characters as the symbols that stand for them (U+2400 and on).
std::wstring i_visible(std::wstring_view texto) {
    std::wstring resultado = sin_trampas(texto);
    for (wchar_t& c : resultado) {
        if (c < 0x20 && c != L'\n') {
            c = static_cast<wchar_t>(0x2400 + c);
        } else if (c == 0x7F) {
            c = 0x2421;
        }
    }
    return resultado;
}

}  // namespace

corriente::corriente(unsigned long cual)
    : asa_(GetStdHandle(cual)), consola_(false), con_color_(false), atributos_(7) {
    unsigned long modo = 0;
    consola_ = asa_ && asa_ != INVALID_HANDLE_VALUE && GetConsoleMode(asa_, &modo);
    CONSOLE_SCREEN_BUFFER_INFO pantalla;
    if (consola_ && GetConsoleScreenBufferInfo(asa_, &pantalla)) {
        atributos_ = pantalla.wAttributes;
        const char* sin_color = std::getenv("NO_COLOR");
        con_color_ = sin_color == nullptr || *sin_color == '\0';
    }
}

size_t corriente::columnas() const {
    CONSOLE_SCREEN_BUFFER_INFO pantalla;
    if (consola_ && GetConsoleScreenBufferInfo(asa_, &pantalla)) {
        const int columnas = pantalla.srWindow.Right - pantalla.srWindow.Left + 1;
        if (columnas >= 20) {
            return static_cast<size_t>(columnas);
        }
    }
    return 80;
}

// A console takes a limited number of characters at once; a pair of surrogates goes in one piece.
unsigned long corriente::i_escribe_en_consola(std::wstring_view texto) const {
    while (!texto.empty()) {
        size_t pieza = std::min(texto.size(), lleno);
        pieza -= pieza < texto.size() && IS_HIGH_SURROGATE(texto[pieza - 1]) ? 1 : 0;
        unsigned long hechas = 0;
        if (!WriteConsoleW(asa_, texto.data(), static_cast<unsigned long>(pieza), &hechas, nullptr)) {
            return GetLastError();
        }
        texto.remove_prefix(pieza);
    }
    return ERROR_SUCCESS;
}

unsigned long corriente::i_escribe_bytes(std::string_view bytes) const {
    while (!bytes.empty()) {
        unsigned long hechos = 0;
        if (!WriteFile(asa_, bytes.data(), static_cast<unsigned long>(bytes.size()), &hechos, nullptr)) {
            return GetLastError();
        }
        if (hechos == 0) {
            return ERROR_WRITE_FAULT;
        }
        bytes.remove_prefix(hechos);
    }
    return ERROR_SUCCESS;
}

void corriente::i_entrega(std::wstring_view texto) {
    // Who starts a program without standard streams wants to be told nothing.
    const bool se_quiere = asa_ != nullptr && asa_ != INVALID_HANDLE_VALUE;
    if (se_quiere && error_ == ERROR_SUCCESS) {
        error_ = consola_ ? i_escribe_en_consola(texto) : i_escribe_bytes(a_utf8(texto));
    }
}

void corriente::vacia() {
    if (!pendiente_.empty()) {
        std::wstring texto;
        texto.swap(pendiente_);
        i_entrega(texto);
    }
}

void corriente::cierra() {
    vacia();
    if (queda_color_) {
        // A Unix terminal under Wine learns of a change of colours only with the next character.
        i_entrega(L" \r");
    }
}

corriente& corriente::escribe(std::wstring_view texto, estilo como) {
    const std::lock_guard turno(turno_de_consola());
    progreso().borra();
    if (this == &errores()) {
        salida().vacia();
    }
    if (!consola_) {
        pendiente_ += this == &errores() ? sin_trampas(texto) : std::wstring(texto);
    } else if (como == estilo::normal || !con_color_) {
        pendiente_ += i_visible(texto);
        queda_color_ = queda_color_ && texto.find_first_not_of(L" \n") == texto.npos;
    } else {
        vacia();
        SetConsoleTextAttribute(asa_, i_atributos(como, atributos_));
        i_entrega(i_visible(texto));
        SetConsoleTextAttribute(asa_, atributos_);
        queda_color_ = true;
    }
    if (pendiente_.size() >= lleno) {
        vacia();
    }
    return *this;
}

corriente& corriente::escribe(std::string_view ascii, estilo como) {
    return escribe(ancho_de(ascii), como);
}

corriente& corriente::linea(std::wstring_view texto, estilo como) {
    const std::lock_guard turno(turno_de_consola());
    if (!texto.empty()) {
        escribe(texto, como);
    }
    escribe(L"\n");
    if (this == &errores()) {
        vacia();
    }
    return *this;
}

corriente& corriente::linea(std::string_view ascii, estilo como) {
    return linea(ancho_de(ascii), como);
}

void corriente::mueve(std::wstring_view texto) {
    vacia();
    i_entrega(texto);
}

corriente& salida() {
    static corriente unica(STD_OUTPUT_HANDLE);
    return unica;
}

corriente& errores() {
    static corriente unica(STD_ERROR_HANDLE);
    return unica;
}

std::recursive_timed_mutex& turno_de_consola() {
    static std::recursive_timed_mutex unico;
    return unico;
}

linea_de_progreso& progreso() {
    static linea_de_progreso unica;
    return unica;
}

void linea_de_progreso::muestra(std::wstring_view texto) {
    if (!errores().es_consola()) {
        return;
    }
    const std::lock_guard turno(turno_de_consola());
    salida().vacia();
    const std::wstring cabe = abreviado(texto, errores().columnas() - 1);
    const size_t columnas = columnas_de(cabe);
    errores().mueve(L"\r" + i_visible(a_la_izquierda(cabe, ocupadas_)));
    ocupadas_ = columnas;
}

void linea_de_progreso::borra() {
    if (ocupadas_ > 0) {
        errores().mueve(L"\r" + std::wstring(ocupadas_, L' ') + L"\r");
        ocupadas_ = 0;
    }
}

bool hay_quien_conteste() {
    unsigned long modo = 0;
    return errores().es_consola() && GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &modo);
}

namespace {

std::optional<std::wstring> i_lee_de_consola(void* asa) {
    wchar_t trozo[256];
    std::wstring linea;
    for (;;) {
        unsigned long leidas = 0;
        if (!ReadConsoleW(asa, trozo, static_cast<unsigned long>(std::size(trozo)), &leidas, nullptr) ||
            leidas == 0) {
            return std::nullopt;
        }
        linea.append(trozo, leidas);
        if (linea.back() == L'\n') {
            break;
        }
    }
    linea.erase(linea.find_last_not_of(L"\r\n") + 1);
    // Control-Z at the beginning of a line is the end of the input.
    return !linea.empty() && linea[0] == 0x1A ? std::nullopt : std::optional(linea);
}

// The code page that other programs write in here. That of this process is UTF-8, by its manifest, so without a console
// the system's own locale tells.
unsigned pagina_de_la_consola() {
    const unsigned de_la_consola = GetConsoleCP();
    if (de_la_consola != 0 && de_la_consola != CP_UTF8) {
        return de_la_consola;
    }
    DWORD del_sistema = 0;
    const int leido =
        GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTCODEPAGE | LOCALE_RETURN_NUMBER,
                       reinterpret_cast<wchar_t*>(&del_sistema), sizeof del_sistema / sizeof(wchar_t));
    return leido != 0 && del_sistema != CP_OEMCP ? del_sistema : GetOEMCP();
}

// What comes through a pipe or from a file, in bytes.
class entrada_de_bytes {
public:
    explicit entrada_de_bytes(void* asa) : asa_(asa) {}

    std::optional<std::wstring> linea() {
        if (numero_++ == 0) {
            i_mira_la_marca();
        }
        if (en_utf16_) {
            return i_linea_de_utf16();
        }
        size_t fin;
        while ((fin = leido_.find_first_of(std::string_view("\n\0", 2))) == leido_.npos && i_lee()) {
        }
        if (leido_.empty()) {
            return std::nullopt;
        }
        std::string linea = leido_.substr(0, fin);
        leido_.erase(0, fin == leido_.npos ? fin : fin + 1);
        if (!linea.empty() && linea.back() == '\r') {
            linea.pop_back();
        }
        return i_texto(linea);
    }

private:
    bool i_lee() {
        char trozo[4096];
        unsigned long bytes = 0;
        terminado_ = terminado_ || !ReadFile(asa_, trozo, sizeof trozo, &bytes, nullptr) || bytes == 0;
        leido_.append(trozo, bytes);
        return !terminado_;
    }

    // A byte-order mark: editors and shells write one, before UTF-8 too.
    void i_mira_la_marca() {
        constexpr std::string_view de_utf8_ = "\xEF\xBB\xBF", de_utf16 = "\xFF\xFE";
        while (leido_.size() < de_utf8_.size() && i_lee()) {
        }
        if (leido_.starts_with(de_utf8_)) {
            leido_.erase(0, de_utf8_.size());
        } else if (leido_.starts_with(de_utf16)) {
            en_utf16_ = true;
            leido_.erase(0, de_utf16.size());
            while (i_lee()) {
            }
            for (size_t i = 0; i + 1 < leido_.size(); i += 2) {
                ancho_ += static_cast<wchar_t>(static_cast<unsigned char>(leido_[i]) |
                                               static_cast<unsigned char>(leido_[i + 1]) << 8);
            }
        }
    }

    std::optional<std::wstring> i_linea_de_utf16() {
        if (ancho_.empty()) {
            return std::nullopt;
        }
        const size_t fin = ancho_.find_first_of(std::wstring_view(L"\n\0", 2));
        std::wstring linea = ancho_.substr(0, fin);
        ancho_.erase(0, fin == ancho_.npos ? fin : fin + 1);
        if (!linea.empty() && linea.back() == L'\r') {
            linea.pop_back();
        }
        return linea;
    }

    std::wstring i_texto(const std::string& bytes) const {
        const unsigned de_la_consola = pagina_de_la_consola();
        for (const unsigned pagina : {static_cast<unsigned>(CP_UTF8), de_la_consola}) {
            if (std::optional<std::wstring> texto = de_pagina_estricta(pagina, bytes)) {
                return *texto;
            }
        }
        throw fallo{
            di("line %1 of standard input is no text in UTF-8, nor in code page %2: refused, nothing is done",
               std::to_wstring(numero_), std::to_wstring(de_la_consola))};
    }

    void* asa_;
    std::string leido_;
    std::wstring ancho_;
    size_t numero_ = 0;
    bool terminado_ = false, en_utf16_ = false;
};

}  // namespace

std::optional<std::wstring> lee_linea() {
    void* asa = GetStdHandle(STD_INPUT_HANDLE);
    unsigned long modo = 0;
    if (asa == nullptr || asa == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    static entrada_de_bytes de_fuera(asa);
    return GetConsoleMode(asa, &modo) ? i_lee_de_consola(asa) : de_fuera.linea();
}

std::vector<std::wstring> lee_lineas() {
    std::vector<std::wstring> lineas;
    while (std::optional<std::wstring> linea = lee_linea()) {
        lineas.push_back(std::move(*linea));
    }
    return lineas;
}

bool pregunta(std::wstring_view texto) {
    const std::lock_guard turno(turno_de_consola());
    errores().escribe(texto, estilo::aviso).escribe(di(" [y/N] ")).vacia();
    const std::optional<std::wstring> respuesta = lee_linea();
    if (!hay_quien_conteste()) {
        errores().linea();  // nobody's Enter has ended the line
    }
    const std::wstring limpia = respuesta ? en_minusculas(sin_blancos(*respuesta)) : std::wstring();
    const bool en_su_lengua = en_espanyol() && (limpia == L"s" || limpia == L"si" || limpia == L"s\u00ed");
    return limpia == L"y" || limpia == L"yes" || en_su_lengua;
}

}  // namespace mando
