// See directorio_abierto.hpp.
#include "companions/directorio_abierto.hpp"

#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <utility>

#include "companions/sin_dialogos.hpp"

namespace interno {
namespace {

constexpr DWORD comparte_todo = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD comparte_sin_borrar = FILE_SHARE_READ | FILE_SHARE_WRITE;
constexpr DWORD acceso_de_mirada = FILE_READ_ATTRIBUTES | SYNCHRONIZE;
constexpr DWORD acceso_de_listado = FILE_LIST_DIRECTORY | acceso_de_mirada;
constexpr DWORD opciones_de_directorio =
    FILE_DIRECTORY_FILE | FILE_OPEN_FOR_BACKUP_INTENT | FILE_SYNCHRONOUS_IO_NONALERT;

// OBJ_DONT_REPARSE: no link on the way is followed (Windows 10 1607 and later).
constexpr DWORD atributo_sin_seguir = 0x1000;

// What headers for Windows 7 lack.
constexpr auto clase_borrado_ampliado = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);  // FileDispositionInfoEx
constexpr auto clase_completa = static_cast<FILE_INFO_BY_HANDLE_CLASS>(14);          // FileFullDirectoryInfo
constexpr auto clase_completa_desde_el_principio = static_cast<FILE_INFO_BY_HANDLE_CLASS>(15);
struct registro_completo {
    ULONG NextEntryOffset;
    ULONG FileIndex;
    LARGE_INTEGER CreationTime, LastAccessTime, LastWriteTime, ChangeTime, EndOfFile, AllocationSize;
    ULONG FileAttributes;
    ULONG FileNameLength;
    ULONG EaSize;
    WCHAR FileName[1];
};
constexpr ULONG borrar_con_posix = 0x1 | 0x2;  // FILE_DISPOSITION_FLAG_DELETE, .._POSIX_SEMANTICS

// Some file systems tell no number so, or all bits.
bool i_es_numero(unsigned long long numero) noexcept {
    return numero != 0 && numero != ~0ull;
}

// The right to change the marks of a file. A system that follows links would open it for writing then, which a read-only one
// refuses to everybody but an administrator; any handle will do there.
DWORD i_acceso_a_marcas() noexcept {
    return sistema.sigue_enlaces() ? SYNCHRONIZE : FILE_WRITE_ATTRIBUTES;
}

// The call is not known here: by the system, or by the file system behind it.
bool i_es_llamada_desconocida(DWORD codigo) noexcept {
    switch (codigo) {
        case ERROR_INVALID_FUNCTION:
        case ERROR_NOT_SUPPORTED:
        case ERROR_INVALID_PARAMETER:
        case ERROR_CALL_NOT_IMPLEMENTED:
        case ERROR_INVALID_LEVEL:
            return true;
        default:
            return false;
    }
}

// What file systems answer that cannot open relative to a handle, each in its own way.
bool i_es_rechazo_de_relativo(DWORD codigo) noexcept {
    return i_es_llamada_desconocida(codigo) || codigo == ERROR_INVALID_HANDLE ||
           codigo == ERROR_INVALID_NAME || codigo == ERROR_BAD_PATHNAME || codigo == ERROR_GEN_FAILURE;
}

// A name that the system would take for a path, or cannot take whole.
bool i_es_intocable(vista_w nombre) noexcept {
    return nombre.empty() || nombre.find_first_of(vista_w(L"\\/\0", 3)) != vista_w::npos;
}

// Some file systems know only the older of the two questions.
std::optional<DWORD> i_atributos(HANDLE abierta) noexcept {
    FILE_BASIC_INFO datos;
    if (sistema.GetFileInformationByHandleEx(abierta, FileBasicInfo, &datos, sizeof datos)) {
        return datos.FileAttributes;
    }
    BY_HANDLE_FILE_INFORMATION de_antes;
    return sistema.GetFileInformationByHandle(abierta, &de_antes) ? std::optional(de_antes.dwFileAttributes)
                                                                  : std::nullopt;
}

DWORD i_pon_atributos(HANDLE abierta, DWORD atributos) noexcept {
    FILE_BASIC_INFO datos = {};  // a date of 0 stays as it is
    datos.FileAttributes = atributos == 0 ? FILE_ATTRIBUTE_NORMAL : atributos;
    return sistema.SetFileInformationByHandle(abierta, FileBasicInfo, &datos, sizeof datos)
               ? ERROR_SUCCESS
               : i_ultimo_error();
}

// The directory itself says that it is one, and no link. Its tag is asked for only when it bears one: not every file
// system knows that question, and some answer nonsense.
bool i_es_directorio_sin_enlace(HANDLE abierta) noexcept {
    const DWORD atributos = i_atributos(abierta).value_or(0);
    if ((atributos & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        return false;
    }
    if ((atributos & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return true;
    }
    FILE_ATTRIBUTE_TAG_INFO punto;
    return sistema.GetFileInformationByHandleEx(abierta, FileAttributeTagInfo, &punto, sizeof punto) &&
           !i_es_de_enlace(atributos, punto.ReparseTag);
}

// Where an open file really lies, until the room of the walk is used again; empty when the system cannot tell.
vista_w i_nombre_verdadero(HANDLE abierta, trato_con_volumen& trato) {
    const wchar_t* nombre = nullptr;
    DWORD unidades = 0;
    return sistema.nombre_de_fichero(abierta, trato.bufer(), trato_con_volumen::bytes_de_lectura, &nombre,
                                     &unidades)
               ? vista_w(nombre, unidades)
               : vista_w();
}

// A directory's name as it stands in the names of what it holds: Wine cuts one dot there.
vista_w i_sin_punto_final(vista_w nombre) noexcept {
    return nombre.substr(0, nombre.size() - (acaba_en(nombre, L".") ? 1 : 0));
}

// An open directory as it stands in the names of what it holds: what the system tells, and the end that it cuts from
// the path by which the directory was opened.
cadena_w i_nombre_de_padre(HANDLE abierto, vista_w ruta, trato_con_volumen& trato) {
    const vista_w dado = i_sin_separadores_finales(ruta);
    const vista_w nombre = dado.substr(dado.find_last_of(L"\\/") + 1);
    const vista_w final_cortado = i_es_punto_o_dos(nombre)
                                      ? vista_w()
                                      : i_sin_punto_final(nombre.substr(sin_final_recortable(nombre).size()));
    return concatena<wchar_t>({i_nombre_verdadero(abierto, trato), final_cortado});
}

cadena_w i_une(vista_w directorio, vista_w nombre) {
    return concatena<wchar_t>({i_sin_separadores_finales(directorio), L"\\", i_sin_punto_final(nombre)});
}

// Whether `verdadero` is what the directory `directorio` holds under this name. Wine tells names without the blanks and
// dots at their end.
bool i_es_nombre_de(vista_w verdadero, vista_w directorio, vista_w nombre) noexcept {
    directorio = i_sin_separadores_finales(directorio);
    return !directorio.empty() && verdadero.size() > directorio.size() &&
           verdadero[directorio.size()] == L'\\' && empieza_por(verdadero, directorio) &&
           sin_final_recortable(verdadero.substr(directorio.size() + 1)) == sin_final_recortable(nombre);
}

// A full path as the native interface takes it.
cadena_w i_forma_nativa(vista_w completa) {
    if (empieza_por(completa, L"\\\\?\\") || empieza_por(completa, L"\\\\.\\")) {
        return concatena<wchar_t>({L"\\??\\", completa.substr(4)});
    }
    return empieza_por(completa, L"\\\\") ? concatena<wchar_t>({L"\\??\\UNC\\", completa.substr(2)})
                                          : concatena<wchar_t>({L"\\??\\", completa});
}

// By a path of the native interface; a link itself.
fichero_abierto i_abre_nativa(const cadena_w& ruta, DWORD acceso, DWORD compartir, DWORD opciones) noexcept {
    return fichero_abierto(sistema.abre_entrada(ruta.c_str(), nullptr, acceso, compartir,
                                                opciones | FILE_OPEN_REPARSE_POINT, OBJ_CASE_INSENSITIVE));
}

// By a path. Nobody is kept from doing anything with what is open.
fichero_abierto i_abre_ruta(const ruta_fijada& ruta, DWORD acceso, DWORD indicadores) noexcept {
    return fichero_abierto(sistema.CreateFileW(ruta.c_str(), acceso, comparte_todo, nullptr, OPEN_EXISTING,
                                               FILE_FLAG_BACKUP_SEMANTICS | indicadores, nullptr));
}

DWORD i_borra_al_cerrar(HANDLE abierta, trato_con_volumen& trato) {
    if (trato.posix) {
        ULONG indicadores = borrar_con_posix;
        if (sistema.SetFileInformationByHandle(abierta, clase_borrado_ampliado, &indicadores,
                                               sizeof indicadores)) {
            return ERROR_SUCCESS;
        }
        const DWORD codigo = i_ultimo_error();
        if (!i_es_llamada_desconocida(codigo)) {
            return codigo;
        }
        trato.posix = false;
    }
    FILE_DISPOSITION_INFO sencillo = {TRUE};
    return sistema.SetFileInformationByHandle(abierta, FileDispositionInfo, &sencillo, sizeof sencillo)
               ? ERROR_SUCCESS
               : i_ultimo_error();
}

// The last name of a full path as its directory lists it; nothing when that is a link. A directory that somebody holds
// without sharing lists nothing: there the name counts as it is written, unless the system would tell it cut short.
std::optional<vista_w> i_nombre_listado(const cadena_w& completa, WIN32_FIND_DATAW& entrada) {
    const ruta_fijada fijada(completa.c_str());
    const manija_busqueda busqueda(sistema.FindFirstFileExW(fijada.c_str(), FindExInfoBasic, &entrada,
                                                            FindExSearchNameMatch, nullptr,
                                                            FIND_FIRST_EX_LARGE_FETCH));
    if (busqueda.valida()) {
        return (entrada.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0
                   ? std::optional(a_vista(&entrada.cFileName[0]))
                   : std::nullopt;
    }
    const vista_w escrito = completa.ver().substr(completa.ver().rfind(L'\\') + 1);
    return i_ultimo_error() == ERROR_SHARING_VIOLATION &&
                   sin_final_recortable(escrito).size() == escrito.size()
               ? std::optional(escrito)
               : std::nullopt;
}

// Where what a path opened lies, as it stands in the names of what it holds (a root, which no directory holds, has a NULL
// string); nothing when it is not what bears the path's last name. A system that follows links opens something else: only
// the name under which it holds what is open tells. Two directories whose names differ by one dot at the end are one.
std::optional<cadena_w> i_ruta_de_lo_nombrado(HANDLE abierto, const ruta_fijada& ruta,
                                              trato_con_volumen& trato) {
    const cadena_w forma = lmlongpath_forma_completa(ruta);
    const cadena_w completa(i_sin_separadores_finales(forma));
    if (i_es_raiz(completa)) {
        return cadena_w();
    }
    const cadena_w de_arriba(completa.ver().substr(0, completa.ver().rfind(L'\\') + 1));
    WIN32_FIND_DATAW entrada;
    const std::optional<vista_w> listado = i_nombre_listado(completa, entrada);
    const fichero_abierto padre = i_abre_ruta(de_arriba.c_str(), acceso_de_mirada, 0);
    if (!listado || !padre.valida()) {
        return {};
    }
    const cadena_w de_arriba_verdadero = i_nombre_de_padre(padre.get(), de_arriba, trato);
    const vista_w nombre = *listado;
    return i_es_nombre_de(i_nombre_verdadero(abierto, trato), de_arriba_verdadero, nombre)
               ? std::optional(i_une(de_arriba_verdadero, nombre))
               : std::nullopt;
}

}  // namespace

unsigned char* trato_con_volumen::bufer() {
    palabras_.reserva_sitio(bytes_de_lectura / sizeof(unsigned long long));
    return reinterpret_cast<unsigned char*>(palabras_.data());
}

DWORD i_codigo_si_lleva_a_otro_sitio(const ruta_fijada& ruta) {
    if (!sistema.sigue_enlaces()) {
        return ERROR_SUCCESS;
    }
    const sin_dialogos callado;
    const fichero_abierto abierto = i_abre_ruta(ruta, acceso_de_mirada, FILE_FLAG_OPEN_REPARSE_POINT);
    if (!abierto.valida()) {
        return abierto.codigo_de_fallo();
    }
    trato_con_volumen trato;
    return i_ruta_de_lo_nombrado(abierto.get(), ruta, trato) ? ERROR_SUCCESS : ERROR_CANT_ACCESS_FILE;
}

// ---- Opening ----

// This directory and all those above it in their walk, the root first: loops over it spend no stack on depth.
vector_interno<directorio_abierto*> directorio_abierto::i_desde_la_raiz() {
    vector_interno<directorio_abierto*> linea;
    for (directorio_abierto* d = this; d != nullptr; d = d->padre_) {
        linea.anade(d);
    }
    std::reverse(linea.begin(), linea.end());
    return linea;
}

DWORD directorio_abierto::abre(const ruta_fijada& raiz, trato_con_volumen& trato, enlace_raiz si_es_enlace) {
    const sin_dialogos callado;
    const bool sigue = si_es_enlace == enlace_raiz::se_sigue;
    trato_ = &trato;
    padre_ = nullptr;
    raiz_ = &raiz;
    manija_ = i_abre_ruta(raiz, acceso_de_listado, sigue ? 0 : FILE_FLAG_OPEN_REPARSE_POINT);
    if (!manija_.valida()) {
        return manija_.codigo_de_fallo();
    }
    numero_ = i_numero(manija_.get());
    if (!i_es_directorio_sin_enlace(manija_.get()) || (!sigue && !i_es_raiz_sin_enlace())) {
        manija_.cierra();
        return ERROR_CANT_ACCESS_FILE;
    }
    return ERROR_SUCCESS;
}

bool directorio_abierto::i_es_raiz_sin_enlace() {
    if (!sistema.sigue_enlaces()) {
        return true;
    }
    std::optional<cadena_w> ruta = i_ruta_de_lo_nombrado(manija_.get(), *raiz_, *trato_);
    nombre_verdadero_ = ruta ? std::move(*ruta) : cadena_w();
    // Wine makes the name of the path, which it follows once more after the opening, and somebody may have put a link there
    // for the first time and a directory for the second. So both must say the same twice.
    const fichero_abierto otra_vez = i_abre_raiz_otra_vez(*raiz_, acceso_de_mirada);
    return ruta && otra_vez.valida() && i_ruta_de_lo_nombrado(otra_vez.get(), *raiz_, *trato_);
}

// Where this directory really lies. The system tells it without the blanks and dots at the end of its own name, but
// with them in the names of what it holds: so it is put together from the names that the directories above tell.
vista_w directorio_abierto::i_ruta_verdadera() {
    for (directorio_abierto* const d : i_desde_la_raiz()) {
        if (d->nombre_verdadero_.es_nula()) {
            d->nombre_verdadero_ =
                d->padre_ != nullptr
                    ? i_une(d->padre_->nombre_verdadero_, d->nombre_)
                    : i_nombre_de_padre(d->manija_.get(), a_vista(d->raiz_->c_str()), *trato_);
        }
    }
    return nombre_verdadero_;
}

DWORD directorio_abierto::abre(directorio_abierto& padre, const entrada_leida& cual) {
    const sin_dialogos callado;
    trato_ = padre.trato_;
    padre_ = &padre;
    nombre_ = cual.nombre;
    if (i_es_de_enlace(cual.atributos, cual.reanalisis)) {
        return ERROR_CANT_ACCESS_FILE;
    }
    manija_ =
        padre.i_abre_por_nombre(cual.nombre, {acceso_de_listado, opciones_de_directorio, comparte_todo});
    if (!manija_.valida()) {
        return manija_.codigo_de_fallo();
    }
    numero_ = i_numero(manija_.get());
    identidad es_ella = i_es_directorio_sin_enlace(manija_.get()) ? i_identidad(cual) : identidad::es_otra;
    if (es_ella == identidad::no_se_sabe) {
        manija_ =
            padre.i_abre_retenida(cual, {acceso_de_listado, opciones_de_directorio, comparte_sin_borrar});
        if (!manija_.valida()) {
            return manija_.codigo_de_fallo();
        }
        numero_ = i_numero(manija_.get());
        es_ella = i_es_directorio_sin_enlace(manija_.get()) ? identidad::es_ella : identidad::es_otra;
    }
    if (es_ella == identidad::es_otra) {
        manija_.cierra();
        return ERROR_CANT_ACCESS_FILE;
    }
    return ERROR_SUCCESS;
}

// Whether what was opened by the name of an entry is what the entry was read of. Where listing and handle disagree,
// the listing of the directory itself is asked: on some file systems they count differently.
directorio_abierto::identidad directorio_abierto::i_identidad(const entrada_leida& cual) {
    if (!i_es_numero(cual.numero) || numero_ == cual.numero) {
        return identidad::es_ella;
    }
    const unsigned long long propio = i_numero_en_listado(L".");
    if (propio == cual.numero) {
        trato_->numeros_coherentes = false;
        return identidad::es_ella;
    }
    return i_es_numero(propio) && propio == numero_ ? identidad::es_otra : identidad::no_se_sabe;
}

// The number that the listing of this directory gives an entry; 0 when it has no such entry.
unsigned long long directorio_abierto::i_numero_en_listado(vista_w nombre) {
    lector_de_directorio entradas(*this);
    while (const entrada_leida* entrada = entradas.siguiente()) {
        if (entrada->nombre == nombre) {
            return entrada->numero;
        }
    }
    return 0;
}

// Where a handle tells another number than the listing did: the child is opened so that nobody can rename it, so it is
// what its name means, and its entry, read once more, must have the number that it had. A system that follows links
// cannot keep a Unix program from renaming, but its numbers always agree: there another number means another thing.
fichero_abierto directorio_abierto::i_abre_retenida(const entrada_leida& cual, const manera& como) {
    if (sistema.sigue_enlaces()) {
        return fichero_abierto::ninguno(ERROR_CANT_ACCESS_FILE);
    }
    fichero_abierto abierta = i_abre_por_nombre(cual.nombre, como);
    if (abierta.valida()) {
        if (i_numero_en_listado(cual.nombre) != cual.numero) {
            return fichero_abierto::ninguno(ERROR_CANT_ACCESS_FILE);
        }
        trato_->numeros_coherentes = false;
    }
    return abierta;
}

fichero_abierto directorio_abierto::i_abre_por_nombre(vista_w nombre, const manera& como) {
    if (i_es_intocable(nombre)) {
        return fichero_abierto::ninguno(ERROR_CANT_ACCESS_FILE);  // it is there, and stays
    }
    if (!trato_->relativo) {
        return i_abre_por_ruta(nombre, como);
    }
    const auto intenta = [&] {
        return fichero_abierto(sistema.abre_entrada(nombre.data(), manija_.get(), como.acceso, como.compartir,
                                                    como.opciones | FILE_OPEN_REPARSE_POINT,
                                                    trato_->sin_seguir ? atributo_sin_seguir : 0));
    };
    fichero_abierto abierta = intenta();
    if (abierta.codigo_de_fallo() == ERROR_INVALID_PARAMETER && trato_->sin_seguir) {
        trato_->sin_seguir = false;
        abierta = intenta();
    }
    if (i_es_rechazo_de_relativo(abierta.codigo_de_fallo())) {
        // Perhaps the name is what is wrong: then the path fails in the same way.
        abierta = i_abre_por_ruta(nombre, como);
        trato_->relativo = !abierta.valida();
    }
    return abierta;
}

// By its full path, while nobody can rename the directories that lead there.
fichero_abierto directorio_abierto::i_abre_por_ruta(vista_w nombre, const manera& como) {
    const DWORD codigo = i_retiene();
    return codigo == ERROR_SUCCESS
               ? i_abre_nativa(i_ruta_nativa(nombre), como.acceso, como.compartir, como.opciones)
               : fichero_abierto::ninguno(codigo);
}

// Opens this directory, and those above it, once more, so that they cannot be renamed or deleted meanwhile. What is
// open then must be what was open before.
DWORD directorio_abierto::i_retiene() {
    for (directorio_abierto* const d : i_desde_la_raiz()) {
        const DWORD codigo = d->retenido_ ? DWORD{ERROR_SUCCESS} : d->i_retiene_este();
        if (codigo != ERROR_SUCCESS) {
            return codigo;
        }
    }
    return ERROR_SUCCESS;
}

DWORD directorio_abierto::i_retiene_este() {
    fichero_abierto retenida =
        i_abre_nativa(i_ruta_nativa(), acceso_de_listado, comparte_sin_borrar, opciones_de_directorio);
    if (!retenida.valida()) {
        return retenida.codigo_de_fallo();
    }
    if (!i_es_directorio_sin_enlace(retenida.get()) || i_numero(retenida.get()) != numero_) {
        return ERROR_CANT_ACCESS_FILE;
    }
    manija_ = std::move(retenida);
    retenido_ = true;
    return ERROR_SUCCESS;
}

cadena_w directorio_abierto::i_ruta_nativa(vista_w nombre) {
    const vector_interno<directorio_abierto*> linea = i_desde_la_raiz();
    const cadena_w raiz = i_forma_nativa(lmlongpath_forma_completa(*linea[0]->raiz_));
    const std::size_t nombres = linea.size() - (nombre.empty() ? 1 : 0);
    return i_ruta_bajo(nombres == 0 ? raiz.ver() : i_sin_separadores_finales(raiz), nombres,
                       [&](std::size_t i) { return i + 1 < linea.size() ? linea[i + 1]->nombre_ : nombre; });
}

// ---- Entries ----

// A system that follows links names what it opens by its path, at that moment. Opened relative to a directory that has
// been moved away, a link would pass for the file that lies at its path by now, and be followed when it is removed. So a
// file is opened by that very path: what bears that name then is no link, and its number tells whether it is the file.
fichero_abierto directorio_abierto::i_abre_nombrado(vista_w nombre, const manera& como) {
    return i_es_intocable(nombre)
               ? fichero_abierto::ninguno(ERROR_CANT_ACCESS_FILE)
               : i_abre_nativa(i_ruta_nativa(nombre), como.acceso, como.compartir, como.opciones);
}

// Whether an open file lies in this directory under this name. Where links are not followed it always does.
bool directorio_abierto::i_esta_donde_dice(HANDLE abierta, vista_w nombre) {
    if (!sistema.sigue_enlaces()) {
        return true;
    }
    const vista_w ruta_verdadera = i_ruta_verdadera();
    return i_es_nombre_de(i_nombre_verdadero(abierta, *trato_), ruta_verdadera, nombre);
}

fichero_abierto directorio_abierto::i_abre_entrada(const entrada_leida& cual, DWORD acceso) {
    const bool es_enlace = i_es_de_enlace(cual.atributos, cual.reanalisis);
    if (es_enlace && sistema.sigue_enlaces()) {
        return fichero_abierto::ninguno(ERROR_CANT_ACCESS_FILE);
    }
    manera como = {acceso | SYNCHRONIZE,
                   cual.es_directorio() ? opciones_de_directorio
                                        : DWORD{FILE_NON_DIRECTORY_FILE | FILE_SYNCHRONOUS_IO_NONALERT},
                   comparte_todo};
    const bool se_nombra = !cual.es_directorio() && sistema.sigue_enlaces();
    fichero_abierto abierta =
        se_nombra ? i_abre_nombrado(cual.nombre, como) : i_abre_por_nombre(cual.nombre, como);
    if (!abierta.valida()) {
        return abierta;
    }
    // A file is what bears its name in its directory. Reached by a path it has to bear its number too: the directories
    // above are held, but not every server minds that, and where links are followed they are not held.
    const bool por_su_numero =
        cual.es_directorio() || se_nombra || (!trato_->relativo && trato_->numeros_coherentes);
    const bool ha_estado_abierta = i_es_numero(cual.numero_abierto);
    const unsigned long long esperado = ha_estado_abierta ? cual.numero_abierto : cual.numero;
    if (por_su_numero && i_es_numero(esperado) && i_numero(abierta.get()) != esperado) {
        if (ha_estado_abierta) {
            return fichero_abierto::ninguno(ERROR_CANT_ACCESS_FILE);
        }
        abierta.cierra();
        como.compartir = comparte_sin_borrar;
        abierta = i_abre_retenida(cual, como);
    }
    return abierta.valida() && !cual.es_directorio() && !i_esta_donde_dice(abierta.get(), cual.nombre)
               ? fichero_abierto::ninguno(ERROR_CANT_ACCESS_FILE)
               : std::move(abierta);
}

DWORD directorio_abierto::borra(const entrada_leida& cual) {
    const sin_dialogos callado;
    const fichero_abierto abierta = i_abre_entrada(cual, DELETE);
    return abierta.valida() ? i_borra_al_cerrar(abierta.get(), *trato_) : abierta.codigo_de_fallo();
}

existencia directorio_abierto::mira(const entrada_leida& cual) {
    const sin_dialogos callado;
    const fichero_abierto abierta = i_abre_entrada(cual, FILE_READ_ATTRIBUTES);
    const std::optional<DWORD> atributos = abierta.valida() ? i_atributos(abierta.get()) : std::nullopt;
    if (atributos) {
        return {existencia::estado::hay, ERROR_SUCCESS, *atributos};
    }
    const DWORD codigo = abierta.valida() ? i_ultimo_error() : abierta.codigo_de_fallo();
    if (codigo == ERROR_ACCESS_DENIED || codigo == ERROR_SHARING_VIOLATION) {
        return {existencia::estado::hay, ERROR_SUCCESS, cual.atributos};
    }
    return {i_dice_que_se_ha_ido(codigo) ? existencia::estado::falta : existencia::estado::no_se_sabe, codigo,
            INVALID_FILE_ATTRIBUTES};
}

DWORD directorio_abierto::pon_atributos(const entrada_leida& cual, DWORD atributos) {
    const sin_dialogos callado;
    const fichero_abierto abierta = i_abre_entrada(cual, i_acceso_a_marcas());
    return abierta.valida() ? i_pon_atributos(abierta.get(), atributos) : abierta.codigo_de_fallo();
}

fichero_abierto directorio_abierto::i_abre_raiz_otra_vez(const ruta_fijada& raiz, DWORD acceso) const {
    fichero_abierto abierta = i_abre_ruta(raiz, acceso | acceso_de_mirada, FILE_FLAG_OPEN_REPARSE_POINT);
    const bool es_otra = abierta.valida() &&
                         (i_numero(abierta.get()) != numero_ || !i_es_directorio_sin_enlace(abierta.get()));
    return es_otra ? fichero_abierto::ninguno(ERROR_CANT_ACCESS_FILE) : std::move(abierta);
}

DWORD directorio_abierto::borra_raiz(const ruta_fijada& raiz) {
    const sin_dialogos callado;
    const fichero_abierto abierta = i_abre_raiz_otra_vez(raiz, DELETE);
    return abierta.valida() ? i_borra_al_cerrar(abierta.get(), *trato_) : abierta.codigo_de_fallo();
}

DWORD directorio_abierto::protege_raiz(const ruta_fijada& raiz, int modo) {
    const sin_dialogos callado;
    const fichero_abierto abierta = i_abre_raiz_otra_vez(raiz, i_acceso_a_marcas());
    if (!abierta.valida()) {
        return abierta.codigo_de_fallo();
    }
    const std::optional<DWORD> atributos = i_atributos(abierta.get());
    return atributos ? i_pon_atributos(abierta.get(), i_con_proteccion(*atributos, modo)) : i_ultimo_error();
}

bool directorio_abierto::esta_en(const ruta_fijada& raiz) const {
    const sin_dialogos callado;
    const fichero_abierto abierta = i_abre_ruta(raiz, acceso_de_mirada, 0);
    return abierta.valida() && i_numero(abierta.get()) == numero_;
}

// ---- Reading ----

const entrada_leida* lector_de_directorio::siguiente() {
    if (codigo_ != ERROR_SUCCESS || (registro_ == nullptr && !i_llena())) {
        return nullptr;
    }
    switch (directorio_.trato_->como_se_lee) {
        case lectura::con_numeros:
            return i_toma_registro<FILE_ID_BOTH_DIR_INFO>() ? &entrada_ : nullptr;
        case lectura::sin_numeros:
            return i_toma_registro<registro_completo>() ? &entrada_ : nullptr;
        default:
            i_toma_de_busqueda();
            return &entrada_;
    }
}

// The first reading finds the way that the file system knows: whatever code a refusal has, the next way is tried.
bool lector_de_directorio::i_llena() {
    lectura& como = directorio_.trato_->como_se_lee;
    if (empezado_) {
        return i_llena_como(como);
    }
    const lectura primera = como;
    for (const lectura intento : {lectura::con_numeros, lectura::sin_numeros, lectura::por_busqueda}) {
        if (intento < primera) {
            continue;
        }
        codigo_ = ERROR_SUCCESS;
        if (i_llena_como(intento)) {
            como = intento;
            empezado_ = true;
            return true;
        }
        if (codigo_ == ERROR_NO_MORE_FILES) {
            return false;
        }
    }
    return false;
}

bool lector_de_directorio::i_llena_como(lectura como) {
    const sin_dialogos callado;
    if (como == lectura::por_busqueda) {
        return empezado_ ? i_sigue_busqueda() : i_empieza_busqueda();
    }
    const FILE_INFO_BY_HANDLE_CLASS clase =
        como == lectura::con_numeros ? (empezado_ ? FileIdBothDirectoryInfo : FileIdBothDirectoryRestartInfo)
                                     : (empezado_ ? clase_completa : clase_completa_desde_el_principio);
    unsigned char* bufer = directorio_.trato_->bufer();
    if (!sistema.GetFileInformationByHandleEx(directorio_.manija_.get(), clase, bufer,
                                              trato_con_volumen::bytes_de_lectura)) {
        codigo_ = i_ultimo_error();
        return false;
    }
    registro_ = bufer;
    return true;
}

bool lector_de_directorio::i_empieza_busqueda() {
    codigo_ = directorio_.i_retiene();
    if (codigo_ != ERROR_SUCCESS) {
        return false;
    }
    // The prefix of the native form says, to the Windows API too, that the path is to be taken literally.
    cadena_w patron = concatena<wchar_t>({directorio_.i_ruta_nativa(), L"\\*"});
    patron.datos()[1] = L'\\';
    busqueda_ = manija_busqueda(sistema.FindFirstFileExW(
        patron.c_str(), FindExInfoBasic, directorio_.trato_->bufer(), FindExSearchNameMatch, nullptr, 0));
    if (!busqueda_.valida()) {
        codigo_ = i_ultimo_error();
        codigo_ = codigo_ == ERROR_FILE_NOT_FOUND ? ERROR_NO_MORE_FILES : codigo_;  // an empty root
        return false;
    }
    registro_ = directorio_.trato_->bufer();
    return true;
}

bool lector_de_directorio::i_sigue_busqueda() {
    unsigned char* bufer = directorio_.trato_->bufer();
    if (!sistema.FindNextFileW(busqueda_.get(), reinterpret_cast<WIN32_FIND_DATAW*>(bufer))) {
        codigo_ = i_ultimo_error();
        return false;
    }
    registro_ = bufer;
    return true;
}

void lector_de_directorio::i_recuerda_ultimo(vista_w nombre) noexcept {
    largo_del_ultimo_ = std::min(nombre.size(), max_nombre);
    rasgos_utf16::copy(ultimo_nombre_, nombre.data(), largo_del_ultimo_);
}

// What a file system writes is believed as far as the room goes that it was given. Records are to begin at multiples
// of eight; some begin at multiples of four, which copying stands.
template <class Registro>
bool lector_de_directorio::i_toma_registro() noexcept {
    const auto quedan = static_cast<std::size_t>(directorio_.trato_->bufer() +
                                                 trato_con_volumen::bytes_de_lectura - registro_);
    constexpr std::size_t hasta_el_nombre = offsetof(Registro, FileName);
    constexpr std::size_t menor_alineacion = 4;
    // The last record may end with its name.
    if (quedan < hasta_el_nombre) {
        codigo_ = ERROR_INVALID_DATA;
        return false;
    }
    Registro leido;
    std::memcpy(&leido, registro_, hasta_el_nombre);
    if (leido.FileNameLength > quedan - hasta_el_nombre || leido.NextEntryOffset >= quedan ||
        leido.NextEntryOffset % menor_alineacion != 0) {
        codigo_ = ERROR_INVALID_DATA;
        return false;
    }
    entrada_.nombre = vista_w(reinterpret_cast<const wchar_t*>(registro_ + hasta_el_nombre),
                              leido.FileNameLength / sizeof(wchar_t));
    entrada_.atributos = leido.FileAttributes;
    entrada_.reanalisis = (leido.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? leido.EaSize : 0;
    entrada_.modificado = {leido.LastWriteTime.LowPart, static_cast<DWORD>(leido.LastWriteTime.HighPart)};
    if constexpr (std::is_same_v<Registro, FILE_ID_BOTH_DIR_INFO>) {
        entrada_.numero = static_cast<unsigned long long>(leido.FileId.QuadPart);  // else it stays 0
    }
    registro_ = leido.NextEntryOffset == 0 ? nullptr : registro_ + leido.NextEntryOffset;
    i_recuerda_ultimo(entrada_.nombre);
    return true;
}

void lector_de_directorio::i_toma_de_busqueda() noexcept {
    const auto* leido = reinterpret_cast<const WIN32_FIND_DATAW*>(registro_);
    entrada_.nombre = a_vista(&leido->cFileName[0]);
    entrada_.atributos = leido->dwFileAttributes;
    entrada_.reanalisis =
        (leido->dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? leido->dwReserved0 : 0;
    entrada_.modificado = leido->ftLastWriteTime;
    registro_ = nullptr;
    i_recuerda_ultimo(entrada_.nombre);
}

}  // namespace interno
