// The exports of fichsdir.h.
#include "fichsdir.h"

#include "abi/exportacion.hpp"
#include "listings/fichsdir_registros.hpp"
#include "paths/rutas.hpp"

using namespace interno;

namespace {

// How the host may interrupt a listing.
struct progreso_de_anfitrion {
    void* progreso;
    unsigned short* interrumpido;
    FichsdirFncUsuarioCierraProgreso cierra;
};

bool i_lo_cierra(void* suyo) {
    const auto& p = *static_cast<const progreso_de_anfitrion*>(suyo);
    const bool cerrado = llama_al_anfitrion(p.cierra, p.progreso) == CIERTO;
    if (cerrado && p.interrumpido != nullptr) {
        *p.interrumpido = CIERTO;
    }
    return cerrado;
}

interrupcion i_interrupcion(progreso_de_anfitrion& suyo) noexcept {
    i_comprueba(suyo.progreso != nullptr, "(progreso) != NULL");
    i_comprueba(suyo.interrumpido != nullptr, "(interrumpido) != NULL");
    if (i_comprueba(suyo.cierra != nullptr, "(fncptr_prgs_usuario_cierra_progreso) != NULL")) {
        return {i_lo_cierra, &suyo};
    }
    i_comprueba(suyo.progreso == nullptr, "progreso == NULL");
    i_comprueba(suyo.interrumpido == nullptr, "interrumpido == NULL");
    return {};
}

bool i_hay_directorio_y_extension(const void* directorio, const void* extension) noexcept {
    return estan({{directorio, "(directorio) != NULL"}, {extension, "(extension) != NULL"}});
}

AcadOrde* i_nombres_base_si_hay(const char* directorio, const char* extension, bool en_mayusculas) {
    return (i_hay_directorio_y_extension(directorio, extension)
                ? i_nombres_base(utf16_temporal(directorio).c_str(), extension, en_mayusculas)
                : objeto<AcadOrde>::crea())
        .suelta();
}

}  // namespace

// ---- Names of directories

ArrCADENA_u* fichsdir_directorios_u(const wchar_t* directorio) {
    return i_directorios<wchar_t>(directorio, i_es_directorio_sin_punto, {}).suelta();
}
ArrCADENA* fichsdir_directorios(const char* directorio) {
    return i_directorios<char>(utf16_temporal(directorio).c_str(), i_es_directorio_sin_punto, {}).suelta();
}

ArrCADENA* fichsdir_directorios_prog(const char* directorio, void* progreso, unsigned short* interrumpido,
                                     FichsdirFncUsuarioCierraProgreso fncptr_prgs_usuario_cierra_progreso) {
    const utf16_temporal ancho(directorio);
    progreso_de_anfitrion suyo{progreso, interrumpido, fncptr_prgs_usuario_cierra_progreso};
    return i_directorios<char>(ancho.c_str(), i_es_directorio_sin_punto, i_interrupcion(suyo)).suelta();
}

ArrCADENA* fichsdir_directorios_sin_extension(const char* directorio) {
    return i_directorios_sin_extension(utf16_temporal(directorio).c_str()).suelta();
}

ArrCADENA_u* fichsdir_directorios_sin_ocultos_u(const wchar_t* directorio) {
    return i_directorios<wchar_t>(directorio, i_es_directorio_a_la_vista, {}).suelta();
}

ArrCADENA_u* fichsdir_directorios_incluyendo_empiezan_por_puntos_u(const wchar_t* directorio) {
    return i_directorios<wchar_t>(directorio, i_es_directorio_con_punto, {}).suelta();
}

ArrCADENA_u* fichsdir_nombres_directorios_cumplen_filtro_u(const wchar_t* path_filtro) {
    return i_nombres_cumplen_filtro<wchar_t>(path_filtro, i_es_directorio<WIN32_FIND_DATAW>).suelta();
}

// ---- Names of files

ArrCADENA_u* fichsdir_nombres_ficheros_u(const wchar_t* directorio) {
    return i_nombres<wchar_t>(directorio, {}, i_es_fichero).suelta();
}
ArrCADENA* fichsdir_nombres_ficheros(const char* directorio) {
    return i_nombres<char>(utf16_temporal(directorio).c_str(), {}, i_es_fichero).suelta();
}

ArrCADENA* fichsdir_nombres_ficheros_prog(
    const char* directorio, void* progreso, unsigned short* interrumpido,
    FichsdirFncUsuarioCierraProgreso fncptr_prgs_usuario_cierra_progreso) {
    const utf16_temporal ancho(directorio);
    progreso_de_anfitrion suyo{progreso, interrumpido, fncptr_prgs_usuario_cierra_progreso};
    return i_nombres<char>(ancho.c_str(), i_interrupcion(suyo), i_es_fichero).suelta();
}

ArrCADENA_u* fichsdir_nombres_ficheros_cumplen_filtro_u(const wchar_t* path_filtro) {
    return i_nombres_cumplen_filtro<wchar_t>(path_filtro, i_es_fichero).suelta();
}
ArrCADENA* fichsdir_nombres_ficheros_cumplen_filtro(const wchar_t* path_filtro) {
    return i_nombres_cumplen_filtro<char>(path_filtro, i_es_fichero).suelta();
}

ArrCADENA_u* fichsdir_nombres_ficheros_con_extension_u(const wchar_t* directorio, const wchar_t* extension) {
    return (i_hay_directorio_y_extension(directorio, extension)
                ? i_nombres_con_extension(directorio, a_vista(extension))
                : objeto<ArrCADENA_u>::crea())
        .suelta();
}
ArrCADENA* fichsdir_nombres_ficheros_con_extension(const char* directorio, const char* extension) {
    return (i_hay_directorio_y_extension(directorio, extension)
                ? i_nombres_con_extension(utf16_temporal(directorio).c_str(), extension)
                : objeto<ArrCADENA>::crea())
        .suelta();
}

AcadOrde* fichsdir_nombres_base_en_mayusculas_ficheros_con_extension(const char* directorio,
                                                                     const char* extension) {
    return i_nombres_base_si_hay(directorio, extension, true);
}

AcadOrde* fichsdir_nombres_base_en_minusculas_ficheros_con_extension(const char* directorio,
                                                                     const char* extension) {
    return i_nombres_base_si_hay(directorio, extension, false);
}

// ---- Records of files

ArrPunteroConTipo* fichsdir_ficheros_u(const wchar_t* directorio) {
    return i_ficheros(directorio, {}).suelta();
}
ArrPunteroConTipo* fichsdir_ficheros(const char* directorio) {
    return i_ficheros(utf16_temporal(directorio).c_str(), {}).suelta();
}

ArrPunteroConTipo* fichsdir_ficheros_prog(
    const char* directorio, void* progreso, unsigned short* interrumpido,
    FichsdirFncUsuarioCierraProgreso fncptr_prgs_usuario_cierra_progreso) {
    const utf16_temporal ancho(directorio);
    progreso_de_anfitrion suyo{progreso, interrumpido, fncptr_prgs_usuario_cierra_progreso};
    return i_ficheros(ancho.c_str(), i_interrupcion(suyo)).suelta();
}

ApunOrde* fichsdir_ficheros_ordenados(void) {
    return i_ficheros_ordenados().suelta();
}

ApunOrde* fichsdir_ficheros_existentes_ordenados(const char* directorio) {
    return i_ficheros_existentes_ordenados(utf16_temporal(directorio).c_str()).suelta();
}

// ---- Operations on a record

char* fichsdir_nombre_fichero(const Fichsdir* fichsdir) {
    return nuevo_texto(i_comprueba_registro(fichsdir) ? a_vista<char>(fichsdir->nombre) : vista_a());
}

wchar_t* fichsdir_path_fichero(const Fichsdir* fichsdir) {
    if (!i_comprueba_registro(fichsdir)) {
        return nuevo_texto(vista_w());
    }
    const cadena_w nombre = utunicode_ANSI_a_UNICODE(a_vista<char>(fichsdir->nombre));
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
               ? a_vista<char>(fichsdir->nombre).compare(vista_a(nombre))
               : 0;
}

void fichsdir_destruye(Fichsdir** fichsdir) {
    if (i_comprueba(fichsdir != nullptr, "(fichsdir) != NULL") && i_comprueba_registro(*fichsdir)) {
        destruye_fichsdir()(*fichsdir);
        *fichsdir = nullptr;
    }
}
