#include "estado/campo.hpp"

#include <algorithm>
#include <cstring>

#include "companions/buclrein.h"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "companions/plataforma.hpp"
#include "estado/companyero.hpp"
#include "lumodir.h"

namespace estado {

using namespace apoyo;

namespace nucleo {

long long llama(long long numero, long long a, long long b, long long c, long long d) {
    long long resultado = -1;
#if defined(__x86_64__) && defined(__GNUC__)
    register long long r10 __asm__("r10") = d;
    __asm__ volatile("syscall"
                     : "=a"(resultado)
                     : "a"(numero), "D"(a), "S"(b), "d"(c), "r"(r10)
                     : "rcx", "r11", "memory");
#else
    (void)numero, (void)a, (void)b, (void)c, (void)d;
#endif
    return resultado;
}

namespace {
long long de(const std::string& t) {
    return reinterpret_cast<long long>(t.c_str());
}
constexpr long long abre = 2, cierra = 3, mira = 6, crea_dir = 83, quita_dir = 84, quita = 87, enlaza = 88,
                    permisos = 90, lista = 217, escribe = 1, quien = 39;
constexpr long long solo_directorio = 0200000, crea_nuevo = 01 | 0100 | 01000;
}  // namespace

bool hay() {
    // From version 9 on such calls may be taken for Windows' own.
    using version_de_wine = const char*(CDECL*)();
    const auto version = reinterpret_cast<version_de_wine>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll"), "wine_get_version")));
    return version != nullptr && std::atoi(version()) < 9;
}

}  // namespace nucleo

using nucleo::de;

texto_w w(std::string_view utf8) {
    texto_w t(utf8.size(), L' ');
    t.resize(static_cast<std::size_t>(::MultiByteToWideChar(
        CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), t.data(), static_cast<int>(t.size()))));
    return t;
}

std::string u8(interno::vista_w texto) {
    std::string t(texto.size() * 3, ' ');
    t.resize(static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, texto.data(),
                                                            static_cast<int>(texto.size()), t.data(),
                                                            static_cast<int>(t.size()), nullptr, nullptr)));
    return t;
}

std::string texto_del_sistema(unsigned long codigo) {
    wchar_t texto[1024];
    DWORD largo =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, codigo,
                         MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), texto, 1024, nullptr);
    while (largo > 0 && texto[largo - 1] <= L' ') {
        --largo;
    }
    return u8(interno::vista_w(texto, largo));
}

namespace {

unsigned la_pagina() {
    const unsigned p = interno::plataforma::pagina_de_codigos;
    return p == 0 ? CP_ACP : p;
}

}  // namespace

std::string a_pagina(const texto_w& t) {
    char bytes[4096];
    const DWORD modo = la_pagina() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int n = ::WideCharToMultiByte(la_pagina(), modo, t.data(), static_cast<int>(t.size()), bytes,
                                        sizeof bytes, nullptr, nullptr);
    return std::string(bytes, static_cast<std::size_t>(n));
}

texto_w de_pagina(const std::string& t) {
    wchar_t unidades[4096];
    const int n = ::MultiByteToWideChar(la_pagina(), 0, t.data(), static_cast<int>(t.size()), unidades, 4096);
    return texto_w(unidades, static_cast<std::size_t>(n));
}

long long hora_local(long long utc) {
    const auto valor = static_cast<unsigned long long>(utc * 10'000'000 + 116'444'736'000'000'000);
    const FILETIME f = {static_cast<DWORD>(valor & 0xFFFFFFFFu), static_cast<DWORD>(valor >> 32)};
    SYSTEMTIME en_utc;
    SYSTEMTIME local;
    FILETIME resultado;
    ::FileTimeToSystemTime(&f, &en_utc);
    ::SystemTimeToTzSpecificLocalTime(nullptr, &en_utc, &local);
    ::SystemTimeToFileTime(&local, &resultado);
    const unsigned long long r =
        static_cast<unsigned long long>(resultado.dwHighDateTime) << 32 | resultado.dwLowDateTime;
    return (static_cast<long long>(r) - 116'444'736'000'000'000) / 10'000'000;
}

// ---- the other process

namespace {

struct pizarra {
    wchar_t ruta[4096];
    DWORD acceso;
    DWORD compartir;
    LONG hecho;
};
constexpr const char* el_que_sujeta = "estado_sujeta";

// Opens what stands on the slate, or closes everything when nothing does, whenever it is told to.
const papel papel_sujeta(el_que_sujeta, [] {
    return acompanya<pizarra>(el_que_sujeta, [abiertas = std::vector<HANDLE>()](pizarra& p) mutable {
        if (p.ruta[0] == 0) {
            for (const HANDLE h : abiertas) {
                ::CloseHandle(h);
            }
            abiertas.clear();
            p.hecho = 1;
        } else {
            const HANDLE h = ::CreateFileW(p.ruta, p.acceso, p.compartir, nullptr, OPEN_EXISTING,
                                           FILE_FLAG_BACKUP_SEMANTICS, nullptr);
            p.hecho = h != INVALID_HANDLE_VALUE;
            if (p.hecho != 0) {
                abiertas.push_back(h);
            }
        }
    });
});

}  // namespace

struct campo::otro {
    bool manda(const texto_w& ruta, DWORD acceso, DWORD compartir) {
        pizarra& p = proceso.mesa();
        std::memcpy(p.ruta, ruta.c_str(), (ruta.size() + 1) * sizeof(wchar_t));
        p.acceso = acceso;
        p.compartir = compartir;
        proceso.empieza();
        proceso.acaba();
        return p.hecho != 0;
    }
    companyero<pizarra> proceso = companyero<pizarra>(el_que_sujeta);
    bool algo_abierto = false;
};

// ---- the host

namespace {

// Wine looks once a second where the drives lie. Before it does, what lies on a new one has a name without its letter; the
// first names to have it would not fit those that were asked for a moment ago.
bool i_conoce_la_unidad() {
    constexpr DWORD paciencia_ms = 5000;
    for (const ULONGLONG empezo = ::GetTickCount64(); ::GetTickCount64() - empezo < paciencia_ms;
         ::Sleep(10)) {
        const HANDLE raiz = ::CreateFileW(L"Q:\\", 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        alignas(8) unsigned char bufer[1024];
        const wchar_t* nombre = nullptr;
        DWORD unidades = 0;
        const bool hay =
            interno::propias::nombre_de_fichero(raiz, bufer, sizeof bufer, &nombre, &unidades) != FALSE;
        ::CloseHandle(raiz);
        if (hay && interno::vista_w(nombre, unidades).substr(0, 6) == L"\\??\\Q:") {
            return true;
        }
    }
    return false;
}

campo* g_campo = nullptr;

unsigned short contesta_al_bucle(const wchar_t* mensaje, unsigned long codigo, void*) {
    campo& c = *g_campo;
    c.sucesos.push_back("question: " + u8(mensaje) + " [" + std::to_string(codigo) + "]");
    if (++c.preguntas == 1) {
        switch (c.al_preguntar) {
            case entretanto::nada:
                break;
            case entretanto::se_suelta:
                c.suelta();
                break;
            case entretanto::se_va:
                ::SetCurrentDirectoryW(L"Q:\\");
                break;
            case entretanto::se_para:
                if (c.seguir != nullptr) {
                    *c.seguir = 0;
                }
                break;
        }
    }
    return c.preguntas <= c.si ? 1 : 0;
}

}  // namespace

campo* campo::actual() {
    return g_campo;
}

campo::campo() {
    if (!nucleo::hay()) {
        por_que_no_ = "needs Wine 8 on Linux, whose kernel a program may call";
        return;
    }
    ::WaitForSingleObject(llave_, INFINITE);
    using a_unix = char*(CDECL*)(const WCHAR*);
    const auto traduce = reinterpret_cast<a_unix>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    char* nombre = traduce(L"C:\\");
    const std::string c = nombre;  // ".../dosdevices/c:/" or without the last
    ::HeapFree(::GetProcessHeap(), 0, nombre);
    unidades_ = c.substr(0, c.rfind("/c:"));
    wchar_t temporal[MAX_PATH + 1];
    ::GetTempPathW(MAX_PATH, temporal);
    nombre = traduce(temporal);
    cima_ = nombre;
    ::HeapFree(::GetProcessHeap(), 0, nombre);
    while (cima_.back() == '/') {
        cima_.pop_back();
    }
    // In memory where there is such a place.
    const std::string propia = "/lumo_estado_" + std::to_string(nucleo::llama(nucleo::quien, 0, 0));
    if (nucleo::llama(nucleo::crea_dir, de("/dev/shm" + propia), 0777) == 0) {
        cima_ = "/dev/shm" + propia;
    } else {
        cima_ += propia;
        nucleo::llama(nucleo::crea_dir, de(cima_), 0777);
    }
    nucleo::llama(nucleo::crea_dir, de(cima_ + "/dentro"), 0777);
    nucleo::llama(nucleo::crea_dir, de(cima_ + "/fuera"), 0777);
    nucleo::llama(nucleo::quita, de(unidades_ + "/q:"), 0);
    nucleo::llama(nucleo::enlaza, de(cima_ + "/dentro"), de(unidades_ + "/q:"));
    nucleo::llama(nucleo::crea_dir, de(unidades_ + "/unc"), 0777);
    nucleo::llama(nucleo::crea_dir, de(unidades_ + "/unc/srv"), 0777);
    nucleo::llama(nucleo::quita, de(unidades_ + "/unc/srv/rec"), 0);
    nucleo::llama(nucleo::enlaza, de(cima_ + "/dentro"), de(unidades_ + "/unc/srv/rec"));
    if (::GetFileAttributesW(L"Q:\\") == INVALID_FILE_ATTRIBUTES) {
        por_que_no_ = "no drive of its own can be made: " + unidades_;
        return;
    }
    if (!i_conoce_la_unidad()) {
        por_que_no_ = "the system does not call the new drive by its letter";
        return;
    }
    g_campo = this;
    error_interno_establece_receptor(
        [](const char* expresion, const char*, unsigned long, const wchar_t* detalle, void*) {
            g_campo->sucesos.push_back("report: " + std::string(expresion) + " [" + u8(detalle) + "]");
        },
        nullptr);
    lmaviso_establece_receptor(
        [](const wchar_t* texto, void*) { g_campo->sucesos.push_back("warning: " + u8(texto)); }, nullptr);
    buclrein_establece_receptor(contesta_al_bucle, nullptr);
    buclrein_establece_politica(0, 0);
    interno::plataforma::duerme_ms = [](unsigned long ms) {
        if (ms > 0) {
            g_campo->sucesos.push_back("pause");
        }
    };
}

campo::~campo() {
    if (g_campo == this) {
        suelta();
        i_repon_entorno();
        ::SetCurrentDirectoryW(L"C:\\");
        ::SetEnvironmentVariableW(L"=Q:", nullptr);
        g_campo = nullptr;
        lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr);
        interno::plataforma::pagina_de_codigos = 0;
        nucleo::llama(nucleo::quita, de(unidades_ + "/q:"), 0);
        nucleo::llama(nucleo::quita, de(unidades_ + "/unc/srv/rec"), 0);
        nucleo::llama(nucleo::quita_dir, de(unidades_ + "/unc/srv"), 0);
    }
    if (!cima_.empty()) {
        i_vacia(cima_);
        nucleo::llama(nucleo::quita_dir, de(cima_), 0);
    }
    ::ReleaseMutex(llave_);
    ::CloseHandle(llave_);
}

texto_w campo::i_del_entorno(const wchar_t* nombre) {
    texto_w valor(::GetEnvironmentVariableW(nombre, nullptr, 0), L' ');
    valor.resize(::GetEnvironmentVariableW(nombre, valor.data(), static_cast<DWORD>(valor.size())));
    return valor;
}
void campo::i_repon_entorno() const {
    for (const auto& [nombre, valor] : entorno_) {
        ::SetEnvironmentVariableW(nombre, valor.empty() ? nullptr : valor.c_str());
    }
}

std::string campo::i_cola(const partes& donde) {
    std::string cola;
    for (const texto_w& p : donde) {
        cola += "/" + u(p);
    }
    return cola;
}

std::vector<std::string> campo::toma_sucesos() {
    std::vector<std::string> t;
    t.swap(sucesos);
    return t;
}

void campo::i_mira(const std::string& ruta, std::vector<entrada_real>& vistas) const {
    const long long fd = nucleo::llama(nucleo::abre, de(ruta), nucleo::solo_directorio, 0);
    if (fd < 0) {
        return;
    }
    std::vector<std::string> nombres;
    char bufer[8192];
    for (long long n;
         (n = nucleo::llama(nucleo::lista, fd, reinterpret_cast<long long>(bufer), sizeof bufer)) > 0;) {
        for (long long i = 0; i < n;) {
            unsigned short largo;
            std::memcpy(&largo, bufer + i + 16, 2);
            const std::string nombre = bufer + i + 19;
            if (nombre != "." && nombre != "..") {
                nombres.push_back(nombre);
            }
            i += largo;
        }
    }
    nucleo::llama(nucleo::cierra, fd, 0);
    for (const std::string& nombre : nombres) {
        char ficha[256] = {};
        const std::string entera = ruta + "/" + nombre;
        nucleo::llama(nucleo::mira, de(entera), reinterpret_cast<long long>(ficha));
        unsigned modo;
        long long bytes;
        long long fecha;
        std::memcpy(&modo, ficha + 24, 4);
        std::memcpy(&bytes, ficha + 48, 8);
        std::memcpy(&fecha, ficha + 88, 8);
        const unsigned clase = modo & 0170000;
        const char tipo = clase == 0040000 ? 'd' : clase == 0120000 ? 'l' : 'f';
        vistas.push_back({entera.substr(cima_.size() + 1), tipo,
                          tipo == 'f' ? static_cast<std::size_t>(bytes) : 0,
                          tipo == 'f' && (modo & 0200) == 0, fecha});
        if (tipo == 'd') {
            i_mira(entera, vistas);
        }
    }
}

void campo::i_vacia(const std::string& ruta) const {
    std::vector<entrada_real> vistas;
    i_mira(ruta, vistas);
    for (auto i = vistas.rbegin(); i != vistas.rend(); ++i) {
        nucleo::llama(i->tipo == 'd' ? nucleo::quita_dir : nucleo::quita, de(cima_ + "/" + i->ruta), 0);
    }
}

void campo::empieza(reglas& r) {
    if (!otro_) {
        otro_ = std::make_unique<otro>();
    }
    suelta();
    i_repon_entorno();
    r = reglas();
    r.busqueda_de_programas = entorno_[0].second;
    ::SetCurrentDirectoryW(L"Q:\\");
    interno::plataforma::pagina_de_codigos = 0;
    lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr);
    si = 0;
    al_preguntar = entretanto::nada;
    sucesos.clear();
    i_vacia(cima_ + "/dentro");
    i_vacia(cima_ + "/fuera");
    // What stands outside, and is never to change.
    const auto pon = [&](const char* nombre, bool es_directorio, std::size_t bytes) {
        const std::string entera = cima_ + "/fuera/" + nombre;
        if (es_directorio) {
            nucleo::llama(nucleo::crea_dir, de(entera), 0777);
            return;
        }
        const long long fd = nucleo::llama(nucleo::abre, de(entera), nucleo::crea_nuevo, 0666);
        nucleo::llama(nucleo::escribe, fd, reinterpret_cast<long long>("0123456789"),
                      static_cast<long long>(bytes));
        nucleo::llama(nucleo::cierra, fd, 0);
    };
    nodo& fuera = r.v.fuera();
    pon("lleno", true, 0);
    pon("lleno/a.txt", false, 3);
    pon("vacio", true, 0);
    pon("f.txt", false, 7);
    fuera.anade({L"lleno", true}).anade({L"a.txt"}).bytes = 3;
    fuera.anade({L"vacio", true});
    fuera.anade({L"f.txt"}).bytes = 7;
}

namespace {

void ordena(std::vector<entrada_real>& v) {
    std::sort(v.begin(), v.end(),
              [](const entrada_real& a, const entrada_real& b) { return a.ruta < b.ruta; });
}

void apunta(const nodo& n, const std::string& donde, std::vector<entrada_real>& todas) {
    for (const auto& [clave, hijo] : n.hijos) {
        const std::string ruta = donde.empty() ? u(hijo.nombre) : donde + "/" + u(hijo.nombre);
        todas.push_back({ruta,
                         hijo.enlace          ? 'l'
                         : hijo.es_directorio ? 'd'
                                              : 'f',
                         hijo.enlace ? 0 : hijo.bytes, !hijo.es_directorio && hijo.solo_lectura,
                         hijo.fecha.value_or(-1)});
        if (!hijo.enlace) {
            apunta(hijo, ruta, todas);
        }
    }
}

}  // namespace

std::vector<entrada_real> campo::entradas() const {
    std::vector<entrada_real> vistas;
    i_mira(cima_, vistas);
    ordena(vistas);
    return vistas;
}

std::vector<entrada_real> campo::pensadas(reglas& r) {
    std::vector<entrada_real> todas;
    apunta(r.v.cima, "", todas);
    ordena(todas);
    return todas;
}

void campo::aprende(reglas& r, volumen anterior, const std::vector<entrada_real>& disco) {
    volumen antes = r.v;
    r.v.cima.hijos.clear();
    for (const entrada_real& e : disco) {  // what holds another comes before it
        partes p;
        for (const char c : e.ruta) {
            if (p.empty() || c == '/') {
                p.emplace_back();
            }
            if (c != '/') {
                p.back().push_back(static_cast<wchar_t>(c));
            }
        }
        nodo* padre = &r.v.cima;
        nodo* viejo = &antes.cima;
        nodo* mas_viejo = &anterior.cima;
        for (texto_w& n : p) {
            std::string bytes;
            for (const wchar_t c : n) {
                bytes += static_cast<char>(c);
            }
            n = w(bytes);
            viejo = viejo == nullptr ? nullptr : viejo->hijo(n);
            mas_viejo = mas_viejo == nullptr ? nullptr : mas_viejo->hijo(n);
        }
        for (std::size_t i = 0; i + 1 < p.size(); ++i) {
            padre = padre->hijo(p[i]);
        }
        nodo& n = padre->anade({p.back(), e.tipo == 'd'});
        n.bytes = e.bytes;
        n.solo_lectura = e.solo_lectura;
        if (e.tipo == 'f') {
            n.fecha = e.fecha;
        }
        viejo = viejo == nullptr ? mas_viejo : viejo;  // which the call has not moved or deleted after all
        if (viejo != nullptr) {
            n.oculto = viejo->oculto;
            n.es_actual = viejo->es_actual;
            n.sujeto = viejo->sujeto;
            n.enlace = viejo->enlace;
            n.es_directorio = viejo->es_directorio;
        }
    }
}

std::string campo::diferencia(reglas& r) {
    const std::vector<entrada_real> real = entradas();
    const std::vector<entrada_real> pensado = pensadas(r);
    const auto cuenta = [](const entrada_real& e) {
        return std::string(1, e.tipo) + " " + e.ruta + " of " + std::to_string(e.bytes) + " bytes" +
               (e.solo_lectura ? ", read-only" : "") + " dated " + std::to_string(e.fecha);
    };
    for (std::size_t i = 0; i < std::max(real.size(), pensado.size()); ++i) {
        if (i == pensado.size() || (i < real.size() && real[i].ruta < pensado[i].ruta)) {
            return "not expected on the disk: " + cuenta(real[i]);
        }
        if (i == real.size() || real[i].ruta != pensado[i].ruta) {
            return "missing on the disk: " + cuenta(pensado[i]);
        }
        const entrada_real& a = real[i];
        const entrada_real& b = pensado[i];
        if (a.tipo != b.tipo || a.bytes != b.bytes || a.solo_lectura != b.solo_lectura ||
            (b.fecha >= 0 && a.fecha != b.fecha)) {
            return "on the disk: " + cuenta(a) + "; expected: " + cuenta(b);
        }
    }
    return "";
}

void campo::pon_fichero(const partes& donde, std::size_t bytes, bool solo_lectura) {
    const std::string ruta = i_ruta(donde);
    const long long fd = nucleo::llama(nucleo::abre, de(ruta), nucleo::crea_nuevo, 0666);
    nucleo::llama(nucleo::escribe, fd, reinterpret_cast<long long>("0123456789"),
                  static_cast<long long>(bytes));
    nucleo::llama(nucleo::cierra, fd, 0);
    if (solo_lectura) {
        nucleo::llama(nucleo::permisos, de(ruta), 0444);
    }
}
void campo::pon_directorio(const partes& donde) {
    nucleo::llama(nucleo::crea_dir, de(i_ruta(donde)), 0777);
}
void campo::pon_enlace(const partes& donde, const partes& destino) {
    nucleo::llama(nucleo::enlaza, de(cima_ + i_cola(destino)), de(i_ruta(donde)));
}
void campo::oculta(const texto_w& ruta) {
    ::SetFileAttributesW(ruta.c_str(), ::GetFileAttributesW(ruta.c_str()) | FILE_ATTRIBUTE_HIDDEN);
}
bool campo::sujeta(const texto_w& ruta, unsigned modo) {
    constexpr DWORD compartir[] = {0, FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE};
    otro_->algo_abierto = true;
    return otro_->manda(ruta, GENERIC_READ, compartir[modo % 3]);
}
void campo::suelta() {
    if (otro_ && otro_->algo_abierto) {
        otro_->manda({}, 0, 0);
        otro_->algo_abierto = false;
    }
}

}  // namespace estado
