// The records of file sets: one file with its date and protection. See fichsdir.hpp.
#include "companions/apunorde.hpp"
#include "companions/ordena.hpp"
#include "companions/reloj.hpp"
#include "listings/fichsdir.hpp"
#include "paths/rutas.hpp"

namespace lumodir {
namespace {

// Reports what is broken; answers whether there is a record at all.
bool i_comprueba_registro(const Fichsdir* fichsdir) {
    if (!i_comprueba(fichsdir != nullptr, "(fichsdir) != NULL")) {
        return false;
    }
    i_comprueba(fichsdir->nombre != nullptr, "(fichsdir->nombre) != NULL");
    i_comprueba(fichsdir->fecha >= 0, "fichsdir->fecha >= 0");
    i_comprueba(fichsdir->ruta != nullptr, "(fichsdir->ruta) != NULL");
    return true;
}

int i_compara(vista_a a, vista_a b) noexcept {
    return a.compare(b);
}

int i_compara_registros(const void* a, const void* b) {
    return i_compara(a_vista<char>(static_cast<const Fichsdir*>(a)->nombre),
                     a_vista<char>(static_cast<const Fichsdir*>(b)->nombre));
}

void i_destruye_registro(void** registro) {
    auto* fichsdir = static_cast<Fichsdir*>(*registro);
    fichsdir_destruye(&fichsdir);
    *registro = fichsdir;
}

void i_toma_ficheros(vector_interno<void*>& registros, const wchar_t* directorio,
                     const progreso_listado& progreso) {
    const vista_w ruta = a_vista(directorio);
    conversor_de_fechas fechas;
    i_recorre_directorio(directorio, progreso, [&](const WIN32_FIND_DATAW& e) {
        if (i_es_directorio(e)) {
            return;
        }
        auto nuevo = registro<Fichsdir>(static_cast<Fichsdir*>(i_reserva(sizeof(Fichsdir))));
        nuevo->nombre = a_ansi(i_nombre_de_entrada(e)).suelta();
        nuevo->fecha = fechas.segundos_locales_desde_1970(e.ftLastWriteTime);
        nuevo->protegido = (e.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0 ? CIERTO : FALSO;
        nuevo->ruta = cadena_w(ruta).suelta();
        registros.anade(nuevo.suelta());
    });
}

ArrPunteroConTipo* i_ficheros(const wchar_t* directorio, const progreso_listado& progreso) {
    auto lista = objeto<ArrPunteroConTipo>::crea();
    i_toma_ficheros(lista->punteros, directorio, progreso);
    return lista.suelta();
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

ArrPunteroConTipo* fichsdir_ficheros_u(const wchar_t* directorio) {
    return i_ficheros(directorio, {});
}

ArrPunteroConTipo* fichsdir_ficheros(const char* directorio) {
    return i_ficheros(utf16_temporal(directorio).c_str(), {});
}

ArrPunteroConTipo* fichsdir_ficheros_prog(
    const char* directorio, void* progreso, unsigned short* interrumpido,
    FichsdirFncUsuarioCierraProgreso fncptr_prgs_usuario_cierra_progreso) {
    return i_ficheros(utf16_temporal(directorio).c_str(),
                      i_progreso(progreso, interrumpido, fncptr_prgs_usuario_cierra_progreso));
}

ApunOrde* fichsdir_ficheros_ordenados(void) {
    return apunorde_nousar_crea(i_compara_registros, i_destruye_registro);
}

ApunOrde* fichsdir_ficheros_existentes_ordenados(const char* directorio) {
    ApunOrde* conjunto = fichsdir_ficheros_ordenados();
    i_toma_ficheros(conjunto->registros, utf16_temporal(directorio).c_str(), {});
    // Sorted once instead of at each insertion: the outcome is the same.
    ordena_estable(conjunto->registros.data(), conjunto->registros.size(), i_compara_registros);
    return conjunto;
}

char* fichsdir_nombre_fichero(const Fichsdir* fichsdir) {
    return cadena_a(i_comprueba_registro(fichsdir) ? a_vista<char>(fichsdir->nombre) : vista_a()).suelta();
}

wchar_t* fichsdir_path_fichero(const Fichsdir* fichsdir) {
    if (!i_comprueba_registro(fichsdir)) {
        return cadena_w(vista_w()).suelta();
    }
    const cadena_w nombre = a_utf16(a_vista<char>(fichsdir->nombre));
    return i_concatena_directorios<wchar_t>(a_vista<wchar_t>(fichsdir->ruta), nombre.ver()).suelta();
}

long long fichsdir_fecha_fichero(const Fichsdir* fichsdir) {
    return i_comprueba_registro(fichsdir) ? fichsdir->fecha : 0;
}

unsigned short fichsdir_fichero_esta_protegido(const Fichsdir* fichsdir) {
    return i_comprueba_registro(fichsdir) ? fichsdir->protegido : FALSO;
}

int fichsdir_compara_nombre(const Fichsdir* fichsdir, const char* nombre) {
    const bool hay_registro = i_comprueba_registro(fichsdir);
    return i_comprueba(nombre != nullptr, "(nombre) != NULL") && hay_registro
               ? i_compara(a_vista<char>(fichsdir->nombre), vista_a(nombre))
               : 0;
}

void fichsdir_destruye(Fichsdir** fichsdir) {
    if (i_comprueba(fichsdir != nullptr, "(fichsdir) != NULL") && i_comprueba_registro(*fichsdir)) {
        i_libera((*fichsdir)->nombre);
        i_libera((*fichsdir)->ruta);
        i_libera(*fichsdir);
        *fichsdir = nullptr;
    }
}
