// A false volume in the place of the system: directories that are opened, listed, deleted and marked by handle, for what
// no file system here can show: reparse tags, numbers that lie, calls that are refused, links that are really followed,
// somebody who swaps directories at the worst moment. Windows only.
//
//     apoyo::volumen_falso v;
//     v.pon("C:\\d", {{"f"}, {"s", FILE_ATTRIBUTE_DIRECTORY}, {"e", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"}});
//     v.pon("C:\\d\\s", {{"g"}});
//     v.rechaza_relativo = ERROR_INVALID_PARAMETER;
//
// While it lives, the library's opens, listings, searches, deletions and attribute calls go to it and nowhere else.
// It behaves as Windows documents, unless told otherwise: a handle is tied to its node, a path is resolved anew and
// through links; what is open without FILE_SHARE_DELETE cannot be renamed, nor what lies above it. Names are UTF-8 and
// taken literally; lone surrogates travel as WTF-8.
//
// With `sigue_enlaces` it behaves as a system that follows every link and tells by name where an open file lies: without
// the blanks and dots at the end of the name, and without one dot at the end of each directory above.
#pragma once

#include <winternl.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <set>

#include "apoyo/apoyo.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

inline constexpr DWORD enlace_dir = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;

struct nodo_falso {
    std::string nombre;
    DWORD atributos = FILE_ATTRIBUTE_NORMAL;
    DWORD etiqueta = 0;   // reparse tag
    std::string destino;  // of a link that is followed
    FILETIME fecha = {};

    // What an open handle says, where that is something else than what the listing says.
    std::optional<DWORD> atributos_abierto;
    std::optional<DWORD> etiqueta_abierta;
    std::optional<unsigned long long> numero_listado;
    std::optional<unsigned long long> numero_abierto;
    std::optional<unsigned long long> numero_propio;  // under "." in its own listing
    std::optional<std::string> nombre_verdadero;      // "" when that cannot be told
    std::string tras_el_nombre;                       // what stands behind it in the room, and is none of it

    DWORD codigo_al_abrir = ERROR_SUCCESS;
    DWORD codigo_al_leer_marcas = ERROR_SUCCESS;
    DWORD codigo_al_marcar = ERROR_SUCCESS;
    DWORD codigo_al_borrar = ERROR_SUCCESS;
    DWORD codigo_al_listar = ERROR_SUCCESS;       // from the first record on
    DWORD codigo_al_final = ERROR_NO_MORE_FILES;  // after the last
    bool con_relativas = true;                    // "." and ".."

    nodo_falso* padre = nullptr;
    std::vector<std::shared_ptr<nodo_falso>> hijos;

    bool es_directorio() const { return (atributos & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    unsigned long long numero() const {
        return numero_listado ? *numero_listado : reinterpret_cast<unsigned long long>(this);
    }
};

class volumen_falso {
public:
    using nodo = std::shared_ptr<nodo_falso>;
    struct entrada {
        std::string nombre;
        DWORD atributos = FILE_ATTRIBUTE_NORMAL;
        DWORD etiqueta = 0;
        std::string destino = {};
    };
    struct apertura {
        std::string nombre;  // as it was given
        bool relativa;       // to an open directory
        DWORD acceso;
        DWORD compartir;
        DWORD opciones;   // of the native interface; of an opening by path, its flags
        DWORD atributos;  // of the object, as the native interface takes them
        bool operator==(const apertura&) const = default;
        friend std::ostream& operator<<(std::ostream& salida, const apertura& a) {
            return salida << a.nombre << (a.relativa ? " (relative) " : " ") << std::hex << a.acceso << " "
                          << a.compartir << " " << a.opciones << " " << a.atributos << std::dec;
        }
    };

    volumen_falso() { i_yo() = this; }
    ~volumen_falso() {
        EXPECT_EQ(manijas_.size(), 0u) << "handles left open";
        EXPECT_EQ(busquedas_, 0) << "searches left open";
        i_yo() = nullptr;
    }
    volumen_falso(const volumen_falso&) = delete;
    volumen_falso& operator=(const volumen_falso&) = delete;

    // Makes a directory, and those above it, with these entries.
    void pon(const std::string& directorio, const std::vector<entrada>& entradas) {
        const nodo d = i_haz(directorio);
        for (const entrada& e : entradas) {
            d->hijos.push_back(i_nuevo(e, d.get()));
        }
    }
    // What stands at a path (links are not followed); it must be there.
    nodo_falso& operator[](const std::string& ruta) {
        const nodo n = i_busca(i_partes(ruta), false);
        EXPECT_NE(n, nullptr) << ruta;
        return n == nullptr ? *raiz_ : *n;
    }
    bool hay(const std::string& ruta) { return i_busca(i_partes(ruta), false) != nullptr; }
    // Somebody renames what stands at a path out of the way and puts something else there. False when what is held
    // open forbids it.
    bool cambia(const std::string& ruta, entrada por, std::vector<entrada> con = {}) {
        const nodo viejo = i_busca(i_partes(ruta), false);
        if (viejo == nullptr || i_esta_retenido(*viejo)) {
            return false;
        }
        nodo_falso& arriba = *viejo->padre;
        por.nombre = viejo->nombre;
        for (nodo& hijo : arriba.hijos) {
            if (hijo == viejo) {
                apartados_.push_back(viejo);
                hijo = i_nuevo(por, &arriba);
                for (const entrada& e : con) {
                    hijo->hijos.push_back(i_nuevo(e, hijo.get()));
                }
            }
        }
        viejo->padre = nullptr;
        return true;
    }
    // The names below a path, sorted as they stand, directories with "\" behind.
    std::vector<std::string> arbol(const std::string& ruta) {
        std::vector<std::string> resultado;
        i_anota((*this)[ruta], "", resultado);
        return resultado;
    }
    std::size_t abiertas() const { return manijas_.size(); }

    // What this system and its file system refuse, with which code.
    DWORD rechaza_relativo = ERROR_SUCCESS;
    DWORD rechaza_con_numeros = ERROR_SUCCESS;
    DWORD rechaza_sin_numeros = ERROR_SUCCESS;
    DWORD rechaza_posix = ERROR_SUCCESS;
    DWORD rechaza_etiqueta = ERROR_SUCCESS;  // the question for a reparse tag
    bool conoce_sin_seguir = true;           // OBJ_DONT_REPARSE
    bool dice_numeros = true;
    bool sigue_enlaces = false;
    // How far handles, and listings of their own ".", count from what the listing above says.
    unsigned long long desfase_de_manijas = 0;
    unsigned long long desfase_de_punto = 0;
    std::size_t alineacion = 8;  // of records in a listing
    std::size_t registros_por_lectura = ~std::size_t{0};
    // Called before each opening, and before each reading of a directory, with its path or name.
    std::function<void(const std::string&)> al_abrir;
    std::function<void()> al_listar;
    std::function<void()> al_buscar;  // before each search by a path
    // Called with what was written for a listing.
    std::function<void(unsigned char* bufer)> estropea;

    // What was asked, in its order.
    std::vector<apertura> aperturas;
    std::vector<FILE_INFO_BY_HANDLE_CLASS> clases;  // of listings
    std::vector<std::string> busquedas_hechas;      // patterns
    std::vector<DWORD> indicadores_de_busqueda;
    std::vector<std::string> borrados;   // names
    std::vector<int> clases_de_borrado;  // 21: with POSIX semantics

private:
    struct manija {
        nodo que;
        DWORD acceso;
        DWORD compartir;
        std::string nombre;  // where it lay when it was opened
        bool empezada = false;
        std::size_t siguiente = 0;
    };
    struct busqueda {
        nodo que;
        std::string nombre;  // "" for all
        std::size_t siguiente = 0;
    };
    using partes = std::vector<std::string>;

    static volumen_falso*& i_yo() {
        static volumen_falso* p = nullptr;
        return p;
    }
    static nodo i_nuevo(const entrada& e, nodo_falso* padre) {
        auto n = std::make_shared<nodo_falso>();
        n->nombre = e.nombre;
        n->atributos = e.atributos;
        n->etiqueta = e.etiqueta;
        n->destino = e.destino;
        n->padre = padre;
        return n;
    }
    static partes i_partes(std::string ruta) {
        for (const char* prefijo : {"\\\\?\\", "\\??\\", "\\\\.\\"}) {
            if (ruta.starts_with(prefijo)) {
                ruta = ruta.substr(4);
            }
        }
        partes resultado;
        if (ruta.starts_with("\\\\")) {
            resultado.push_back("UNC");
        }
        std::string parte;
        for (const char c : ruta + "\\") {
            if (c != '\\' && c != '/') {
                parte += c;
            } else if (!parte.empty()) {
                resultado.push_back(parte);
                parte.clear();
            }
        }
        return resultado;
    }
    static nodo i_hijo(const nodo_falso& de, const std::string& nombre) {
        for (const nodo& hijo : de.hijos) {
            if (hijo->nombre == nombre) {
                return hijo;
            }
        }
        return nullptr;
    }
    nodo i_haz(const std::string& directorio) {
        nodo actual = raiz_;
        for (const std::string& parte : i_partes(directorio)) {
            nodo hijo = i_hijo(*actual, parte);
            if (hijo == nullptr) {
                hijo = i_nuevo({parte, FILE_ATTRIBUTE_DIRECTORY}, actual.get());
                actual->hijos.push_back(hijo);
            }
            actual = hijo;
        }
        return actual;
    }
    nodo i_busca(const partes& camino, bool sigue_el_ultimo, int saltos = 0) {
        nodo actual = raiz_;
        for (std::size_t i = 0; i < camino.size() && actual != nullptr; ++i) {
            actual = i_hijo(*actual, camino[i]);
            const bool se_sigue = sigue_el_ultimo || i + 1 < camino.size();
            if (actual != nullptr && !actual->destino.empty() && se_sigue && saltos < 10) {
                actual = i_busca(i_partes(actual->destino), true, saltos + 1);
            }
        }
        return actual;
    }
    bool i_esta_retenido(const nodo_falso& n) const {
        for (const auto& [clave, abierta] : manijas_) {
            if ((abierta->compartir & FILE_SHARE_DELETE) != 0) {
                continue;
            }
            for (const nodo_falso* p = abierta->que.get(); p != nullptr; p = p->padre) {
                if (p == &n) {
                    return true;
                }
            }
        }
        return false;
    }
    static void i_anota(const nodo_falso& n, const std::string& delante,
                        std::vector<std::string>& resultado) {
        for (const nodo& hijo : n.hijos) {
            resultado.push_back(delante + hijo->nombre + (hijo->es_directorio() ? "\\" : ""));
            i_anota(*hijo, delante + hijo->nombre + "\\", resultado);
        }
    }
    template <class R>
    static R i_falla(DWORD codigo, R valor) {
        ::SetLastError(codigo);
        return valor;
    }
    HANDLE i_abre(const nodo& que, DWORD acceso, DWORD compartir) {
        if (que == nullptr) {
            return i_falla(ERROR_FILE_NOT_FOUND, INVALID_HANDLE_VALUE);
        }
        if (que->codigo_al_abrir != ERROR_SUCCESS) {
            return i_falla(que->codigo_al_abrir, INVALID_HANDLE_VALUE);
        }
        for (const auto& [clave, abierta] : manijas_) {
            const bool estorba = ((acceso & DELETE) != 0 && (abierta->compartir & FILE_SHARE_DELETE) == 0) ||
                                 ((abierta->acceso & DELETE) != 0 && (compartir & FILE_SHARE_DELETE) == 0);
            if (abierta->que == que && estorba) {
                return i_falla(ERROR_SHARING_VIOLATION, INVALID_HANDLE_VALUE);
            }
        }
        auto nueva = std::make_unique<manija>(manija{que, acceso, compartir, i_nombre_de(*que)});
        const HANDLE clave = nueva.get();
        manijas_[clave] = std::move(nueva);
        return clave;
    }
    static std::string i_nombre_de(const nodo_falso& n) {
        std::string nombre = n.nombre.substr(0, n.nombre.find_last_not_of(". ") + 1);
        for (const nodo_falso* p = n.padre; p != nullptr && p->padre != nullptr; p = p->padre) {
            const std::size_t largo = p->nombre.size() - (p->nombre.ends_with('.') ? 1 : 0);
            nombre = p->nombre.substr(0, largo) + "\\" + nombre;
        }
        return "\\??\\" + nombre;
    }
    manija* i_manija(HANDLE h) const {
        const auto donde = manijas_.find(h);
        EXPECT_NE(donde, manijas_.end()) << "no handle of the false volume";
        return donde == manijas_.end() ? nullptr : donde->second.get();
    }

    static HANDLE WINAPI i_crea(LPCWSTR ruta, DWORD acceso, DWORD compartir, LPSECURITY_ATTRIBUTES,
                                DWORD disposicion, DWORD indicadores, HANDLE) {
        volumen_falso& v = *i_yo();
        const std::string texto = u8(ruta);
        if (v.al_abrir) {
            v.al_abrir(texto);
        }
        EXPECT_EQ(disposicion, DWORD{OPEN_EXISTING}) << texto;
        v.aperturas.push_back({texto, false, acceso, compartir, indicadores, 0});
        const bool sigue = v.sigue_enlaces || (indicadores & FILE_FLAG_OPEN_REPARSE_POINT) == 0;
        return v.i_abre(v.i_busca(i_partes(texto), sigue), acceso, compartir);
    }
    static HANDLE WINAPI i_abre_entrada(const wchar_t* nombre, HANDLE directorio, DWORD acceso,
                                        DWORD compartir, DWORD opciones, DWORD atributos) {
        volumen_falso& v = *i_yo();
        const std::string texto = u8(nombre);
        if (v.al_abrir) {
            v.al_abrir(texto);
        }
        EXPECT_NE(opciones & FILE_OPEN_REPARSE_POINT, 0u) << "links are never followed: " << texto;
        constexpr DWORD sin_seguir = 0x1000;
        v.aperturas.push_back({texto, directorio != nullptr, acceso, compartir, opciones, atributos});
        nodo que;
        if (directorio == nullptr) {
            que = v.i_busca(i_partes(texto), v.sigue_enlaces);
        } else {
            EXPECT_EQ(texto.find_first_of("\\/"), texto.npos) << "a path in the place of a name: " << texto;
            const manija* padre = v.i_manija(directorio);
            if (v.rechaza_relativo != ERROR_SUCCESS) {
                return i_falla(v.rechaza_relativo, INVALID_HANDLE_VALUE);
            }
            que = padre == nullptr ? nullptr : i_hijo(*padre->que, texto);
        }
        if (v.sigue_enlaces && que != nullptr && !que->destino.empty()) {
            que = v.i_busca(i_partes(que->destino), true);
        }
        if ((atributos & sin_seguir) != 0 && !v.conoce_sin_seguir) {
            return i_falla(ERROR_INVALID_PARAMETER, INVALID_HANDLE_VALUE);
        }
        if (que != nullptr && (opciones & FILE_DIRECTORY_FILE) != 0 && !que->es_directorio()) {
            return i_falla(ERROR_DIRECTORY, INVALID_HANDLE_VALUE);
        }
        if (que != nullptr && (opciones & FILE_NON_DIRECTORY_FILE) != 0 && que->es_directorio()) {
            return i_falla(ERROR_ACCESS_DENIED, INVALID_HANDLE_VALUE);
        }
        return v.i_abre(que, acceso, compartir);
    }
    static BOOL WINAPI i_cierra(HANDLE h) {
        if (i_yo()->manijas_.erase(h) == 0) {
            return ::CloseHandle(h);
        }
        ::SetLastError(ERROR_INVALID_HANDLE);  // a destructor must not let this show
        return TRUE;
    }

    struct registro_completo {
        ULONG NextEntryOffset, FileIndex;
        LARGE_INTEGER CreationTime, LastAccessTime, LastWriteTime, ChangeTime, EndOfFile, AllocationSize;
        ULONG FileAttributes, FileNameLength, EaSize;
        WCHAR FileName[1];
    };
    struct fila {
        std::string nombre;
        DWORD atributos;
        DWORD etiqueta;
        FILETIME fecha;
        unsigned long long numero;
    };
    static std::vector<fila> i_filas(const nodo_falso& n) {
        std::vector<fila> filas;
        if (n.con_relativas) {
            filas.push_back({".",
                             FILE_ATTRIBUTE_DIRECTORY,
                             0,
                             {},
                             n.numero_propio.value_or(n.numero() + i_yo()->desfase_de_punto)});
            filas.push_back(
                {"..", FILE_ATTRIBUTE_DIRECTORY, 0, {}, n.padre == nullptr ? 0 : n.padre->numero()});
        }
        for (const nodo& hijo : n.hijos) {
            filas.push_back({hijo->nombre, hijo->atributos, hijo->etiqueta, hijo->fecha, hijo->numero()});
        }
        return filas;
    }
    template <class Registro>
    BOOL i_lista(manija& m, bool desde_el_principio, unsigned char* bufer, DWORD bytes) {
        if (desde_el_principio || !m.empezada) {
            m.siguiente = 0;
        }
        m.empezada = true;
        if (m.que->codigo_al_listar != ERROR_SUCCESS) {
            return i_falla(m.que->codigo_al_listar, FALSE);
        }
        const std::vector<fila> filas = i_filas(*m.que);
        if (m.siguiente >= filas.size()) {
            return i_falla(m.que->codigo_al_final, FALSE);
        }
        std::memset(bufer, 0xCD, bytes);
        std::size_t desde = 0;
        std::size_t ultimo = bytes;  // where the last record begins; none yet
        for (std::size_t n = 0; m.siguiente < filas.size() && n < registros_por_lectura; ++n) {
            const fila& f = filas[m.siguiente];
            const texto_w nombre = w(f.nombre);
            const std::size_t largo = offsetof(Registro, FileName) + nombre.size() * sizeof(wchar_t);
            if (desde + (largo < sizeof(Registro) ? sizeof(Registro) : largo) > bytes) {
                break;
            }
            if (ultimo != bytes) {
                const auto paso = static_cast<ULONG>(desde - ultimo);
                std::memcpy(bufer + ultimo + offsetof(Registro, NextEntryOffset), &paso, sizeof paso);
            }
            Registro r = {};
            r.FileAttributes = f.atributos;
            r.EaSize = f.etiqueta;
            r.LastWriteTime.LowPart = f.fecha.dwLowDateTime;
            r.LastWriteTime.HighPart = static_cast<LONG>(f.fecha.dwHighDateTime);
            r.FileNameLength = static_cast<ULONG>(nombre.size() * sizeof(wchar_t));
            if constexpr (std::is_same_v<Registro, FILE_ID_BOTH_DIR_INFO>) {
                r.FileId.QuadPart = static_cast<LONGLONG>(dice_numeros ? f.numero : 0);
            }
            std::memcpy(bufer + desde, &r, sizeof r);
            std::memcpy(bufer + desde + offsetof(Registro, FileName), nombre.data(),
                        nombre.size() * sizeof(wchar_t));
            ultimo = desde;
            desde += (largo + alineacion - 1) / alineacion * alineacion;
            ++m.siguiente;
        }
        if (estropea) {
            estropea(bufer);
        }
        return TRUE;
    }
    static BOOL WINAPI i_informacion(HANDLE h, FILE_INFO_BY_HANDLE_CLASS clase, LPVOID datos, DWORD bytes) {
        volumen_falso& v = *i_yo();
        manija* m = v.i_manija(h);
        if (m == nullptr) {
            return i_falla(ERROR_INVALID_HANDLE, FALSE);
        }
        if (clase == FileBasicInfo && m->que->codigo_al_leer_marcas != ERROR_SUCCESS) {
            return i_falla(m->que->codigo_al_leer_marcas, FALSE);
        }
        if (clase == FileAttributeTagInfo && v.rechaza_etiqueta != ERROR_SUCCESS) {
            return i_falla(v.rechaza_etiqueta, FALSE);
        }
        if (clase == FileBasicInfo) {
            auto* basico = static_cast<FILE_BASIC_INFO*>(datos);
            *basico = {};
            basico->FileAttributes = m->que->atributos_abierto.value_or(m->que->atributos);
            return TRUE;
        }
        if (clase == FileAttributeTagInfo) {
            auto* marca = static_cast<FILE_ATTRIBUTE_TAG_INFO*>(datos);
            marca->FileAttributes = m->que->atributos_abierto.value_or(m->que->atributos);
            marca->ReparseTag = m->que->etiqueta_abierta.value_or(m->que->etiqueta);
            return TRUE;
        }
        v.clases.push_back(clase);
        if (v.al_listar) {
            v.al_listar();
        }
        constexpr int completa = 14;
        constexpr int completa_desde_el_principio = 15;
        auto* bufer = static_cast<unsigned char*>(datos);
        if (clase == FileIdBothDirectoryInfo || clase == FileIdBothDirectoryRestartInfo) {
            return v.rechaza_con_numeros != ERROR_SUCCESS
                       ? i_falla(v.rechaza_con_numeros, FALSE)
                       : v.i_lista<FILE_ID_BOTH_DIR_INFO>(*m, clase == FileIdBothDirectoryRestartInfo, bufer,
                                                          bytes);
        }
        if (clase == completa || clase == completa_desde_el_principio) {
            return v.rechaza_sin_numeros != ERROR_SUCCESS
                       ? i_falla(v.rechaza_sin_numeros, FALSE)
                       : v.i_lista<registro_completo>(*m, clase == completa_desde_el_principio, bufer, bytes);
        }
        ADD_FAILURE() << "class " << clase;
        return i_falla(ERROR_INVALID_PARAMETER, FALSE);
    }
    // What cannot be told in the newer way cannot be told in this one either.
    static BOOL WINAPI i_informacion_de_antes(HANDLE h, BY_HANDLE_FILE_INFORMATION*) {
        const manija* m = i_yo()->i_manija(h);
        return i_falla(m == nullptr ? ERROR_INVALID_HANDLE : m->que->codigo_al_leer_marcas, FALSE);
    }
    static BOOL WINAPI i_numero(HANDLE h, unsigned long long* numero) {
        const manija* m = i_yo()->i_manija(h);
        if (m == nullptr || !i_yo()->dice_numeros) {
            return i_falla(ERROR_INVALID_PARAMETER, FALSE);
        }
        *numero = m->que->numero_abierto.value_or(m->que->numero() + i_yo()->desfase_de_manijas);
        return TRUE;
    }
    static BOOL WINAPI i_nombre(HANDLE h, void* bufer, DWORD bytes, const wchar_t** nombre, DWORD* unidades) {
        EXPECT_TRUE(i_yo()->sigue_enlaces) << "nobody follows links here";
        const manija* m = i_yo()->i_manija(h);
        const std::string dicho = m == nullptr ? "" : m->que->nombre_verdadero.value_or(m->nombre);
        if (dicho.empty()) {
            return i_falla(ERROR_NOT_SUPPORTED, FALSE);
        }
        const texto_w texto = w(dicho + m->que->tras_el_nombre);
        EXPECT_LE(texto.size() * sizeof(wchar_t), bytes);
        std::memcpy(bufer, texto.data(), texto.size() * sizeof(wchar_t));
        *nombre = static_cast<const wchar_t*>(bufer);
        *unidades = static_cast<DWORD>(w(dicho).size());
        return TRUE;
    }
    static BOOL WINAPI i_sigue_enlaces() { return i_yo()->sigue_enlaces ? TRUE : FALSE; }

    BOOL i_borra(const nodo& que, bool marca_de_lectura_estorba) {
        if (que->codigo_al_borrar != ERROR_SUCCESS) {
            return i_falla(que->codigo_al_borrar, FALSE);
        }
        if (marca_de_lectura_estorba && (que->atributos & FILE_ATTRIBUTE_READONLY) != 0) {
            return i_falla(ERROR_ACCESS_DENIED, FALSE);
        }
        if (!que->hijos.empty()) {
            return i_falla(ERROR_DIR_NOT_EMPTY, FALSE);
        }
        borrados.push_back(que->nombre);
        if (que->padre != nullptr) {
            std::erase(que->padre->hijos, que);
            que->padre = nullptr;
        }
        return TRUE;
    }
    static BOOL WINAPI i_pon_informacion(HANDLE h, FILE_INFO_BY_HANDLE_CLASS clase, LPVOID datos, DWORD) {
        volumen_falso& v = *i_yo();
        manija* m = v.i_manija(h);
        constexpr int borrado_ampliado = 21;
        if (m == nullptr) {
            return i_falla(ERROR_INVALID_HANDLE, FALSE);
        }
        if (clase == FileBasicInfo && m->que->codigo_al_marcar != ERROR_SUCCESS) {
            return i_falla(m->que->codigo_al_marcar, FALSE);
        }
        if (clase == FileBasicInfo) {
            m->que->atributos = static_cast<FILE_BASIC_INFO*>(datos)->FileAttributes;
            return TRUE;
        }
        v.clases_de_borrado.push_back(clase);
        if (clase == borrado_ampliado) {
            EXPECT_EQ(*static_cast<ULONG*>(datos), 3u) << "delete, with POSIX semantics";
            return v.rechaza_posix != ERROR_SUCCESS ? i_falla(v.rechaza_posix, FALSE)
                                                    : v.i_borra(m->que, true);
        }
        EXPECT_EQ(clase, FileDispositionInfo);
        EXPECT_EQ(static_cast<FILE_DISPOSITION_INFO*>(datos)->DeleteFile, TRUE);
        return v.i_borra(m->que, true);
    }

    static DWORD WINAPI i_atributos(LPCWSTR ruta) {
        const nodo n = i_yo()->i_busca(i_partes(u8(ruta)), false);
        return n == nullptr ? i_falla(ERROR_FILE_NOT_FOUND, INVALID_FILE_ATTRIBUTES) : n->atributos;
    }
    static BOOL WINAPI i_pon_atributos(LPCWSTR ruta, DWORD nuevos) {
        const nodo n = i_yo()->i_busca(i_partes(u8(ruta)), false);
        if (n == nullptr) {
            return i_falla(ERROR_FILE_NOT_FOUND, FALSE);
        }
        n->atributos = nuevos;
        return TRUE;
    }
    static BOOL WINAPI i_quita_directorio(LPCWSTR ruta) {
        const nodo n = i_yo()->i_busca(i_partes(u8(ruta)), false);
        return n == nullptr ? i_falla(ERROR_FILE_NOT_FOUND, FALSE) : i_yo()->i_borra(n, true);
    }

    static BOOL i_da(busqueda& b, WIN32_FIND_DATAW* datos) {
        std::vector<fila> filas = i_filas(*b.que);
        if (!b.nombre.empty()) {
            std::erase_if(filas, [&](const fila& f) { return f.nombre != b.nombre; });
        }
        if (b.siguiente >= filas.size()) {
            return i_falla(b.que->codigo_al_final, FALSE);
        }
        const fila& f = filas[b.siguiente++];
        *datos = {};
        datos->dwFileAttributes = f.atributos;
        datos->dwReserved0 = f.etiqueta;
        datos->ftLastWriteTime = f.fecha;
        lstrcpynW(datos->cFileName, w(f.nombre).c_str(), MAX_PATH);
        return TRUE;
    }
    static HANDLE WINAPI i_busca_primera(LPCWSTR patron, FINDEX_INFO_LEVELS, LPVOID datos, FINDEX_SEARCH_OPS,
                                         LPVOID, DWORD indicadores) {
        volumen_falso& v = *i_yo();
        std::string texto = u8(patron);
        if (v.al_buscar) {
            v.al_buscar();
        }
        v.busquedas_hechas.push_back(texto);
        v.indicadores_de_busqueda.push_back(indicadores);
        const std::size_t separador = texto.rfind('\\');
        std::string nombre = texto.substr(separador + 1);
        EXPECT_TRUE(nombre == "*" || v.sigue_enlaces) << texto;
        texto.resize(separador == texto.npos ? 0 : separador);
        const nodo n = v.i_busca(i_partes(texto), true);
        if (n == nullptr) {
            return i_falla(ERROR_PATH_NOT_FOUND, INVALID_HANDLE_VALUE);
        }
        if (n->codigo_al_listar != ERROR_SUCCESS) {
            return i_falla(n->codigo_al_listar, INVALID_HANDLE_VALUE);
        }
        busqueda b = {n, nombre == "*" ? "" : nombre};
        if (!i_da(b, static_cast<WIN32_FIND_DATAW*>(datos))) {
            return i_falla(ERROR_FILE_NOT_FOUND, INVALID_HANDLE_VALUE);
        }
        ++v.busquedas_;
        return new busqueda(b);
    }
    static BOOL WINAPI i_busca_siguiente(HANDLE h, LPWIN32_FIND_DATAW datos) {
        return i_da(*static_cast<busqueda*>(h), datos);
    }
    static BOOL WINAPI i_cierra_busqueda(HANDLE h) {
        --i_yo()->busquedas_;
        delete static_cast<busqueda*>(h);
        ::SetLastError(ERROR_INVALID_HANDLE);
        return TRUE;
    }

    // Set in the whole table at once, and put back at the end.
    struct desvio {
        desvio() : antes(interno::sistema) {
            interno::tabla_sistema& t = interno::sistema;
            t.CreateFileW = i_crea;
            t.abre_entrada = i_abre_entrada;
            t.CloseHandle = i_cierra;
            t.GetFileInformationByHandleEx = i_informacion;
            t.GetFileInformationByHandle = i_informacion_de_antes;
            t.SetFileInformationByHandle = i_pon_informacion;
            t.numero_de_fichero = i_numero;
            t.nombre_de_fichero = i_nombre;
            t.sigue_enlaces = i_sigue_enlaces;
            t.GetFileAttributesW = i_atributos;
            t.SetFileAttributesW = i_pon_atributos;
            t.RemoveDirectoryW = i_quita_directorio;
            t.FindFirstFileExW = i_busca_primera;
            t.FindNextFileW = i_busca_siguiente;
            t.FindClose = i_cierra_busqueda;
        }
        ~desvio() { interno::sistema = antes; }
        desvio(const desvio&) = delete;
        desvio& operator=(const desvio&) = delete;
        interno::tabla_sistema antes;
    };

    nodo raiz_ = i_nuevo({"", FILE_ATTRIBUTE_DIRECTORY}, nullptr);
    std::vector<nodo> apartados_;
    std::map<HANDLE, std::unique_ptr<manija>> manijas_;
    int busquedas_ = 0;
    desvio desvio_;
};

}  // namespace apoyo
