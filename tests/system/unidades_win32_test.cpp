// The drives with their labels, in both flavours, and the drive of the running program.
#include <direct.h>
#include <cstddef>

#include "apoyo/unidades.hpp"
#include "cdir.h"
#include "companions/cadena.hpp"
#include "companions/lumospy.hpp"
#include "discos.h"
#include "info.h"
#include "lumodir.h"
#include "system/unidades.hpp"

using namespace apoyo;
using interno::i_etiqueta_de_unidad;
using interno::i_olvida_disco_de_programa;
using interno::sistema;

static_assert(sizeof(UnidadSistema) == 12 && offsetof(UnidadSistema, tipo) == 8,
              "programs rely on the packed layout");

namespace {

// "C:=5; Z: (\\srv\x)=8", read through the exports; the list is freed as a host frees it.
std::string texto_de_unidades(ArrPunteroConTipo* lista, bool ancha) {
    std::string texto;
    for (unsigned long i = 0; i < arr_NumElemsPuntero(lista); ++i) {
        const auto* unidad = static_cast<const UnidadSistema*>(arr_GetPunteroConTipo(lista, i));
        texto += (i == 0 ? "" : "; ") +
                 (ancha ? toma(lumodir_nombreCompleto_UnidadSistema_UNICODE(unidad))
                        : toma(lumodir_nombreCompleto_UnidadSistema(unidad))) +
                 "=" + std::to_string(lumodir_tipoDrive_UnidadSistema(unidad));
    }
    arr_DestruyeEstructurasConTipo(
        &lista, reinterpret_cast<ArrDestruyeRegistro>(lumodir_destruyeEstructuraUnidadSistema));
    EXPECT_EQ(lista, nullptr);
    return texto;
}

const std::map<char, unidad_fingida> una_de_cada_clase = {
    {'A', {.tipo = DRIVE_REMOVABLE, .volumen = "disquete"}},
    {'C', {.tipo = DRIVE_FIXED, .volumen = "Sistema \u00F1"}},
    {'D', {.tipo = DRIVE_CDROM, .volumen = "CD"}},
    {'E', {.tipo = DRIVE_REMOVABLE, .volumen = ""}},
    {'N', {.tipo = DRIVE_REMOTE, .volumen = "datos", .red = "\\\\srv\\Pa\u00EDs"}},
    {'O', {.tipo = DRIVE_REMOTE}},
    {'R', {.tipo = DRIVE_RAMDISK, .volumen = "RAM"}},
    {'V', {.tipo = DRIVE_NO_ROOT_DIR}},
};

}  // namespace

TEST(unidades, las_unidades_sin_nombre_de_volumen) {
    const char* const esperado = "A:=3; C:=5; D:=7; E:=6; N: (\\\\srv\\Pa\u00EDs)=8; O: (?)=8; R:=9";
    maquina_fingida maquina(una_de_cada_clase);
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistema(), true), esperado);
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistema(), false), esperado);
    for (const std::string& pregunta : maquina.preguntas) {
        EXPECT_EQ(pregunta.find("GetVolumeInformationW"), std::string::npos) << "no drive is opened";
    }
}

TEST(unidades, solo_las_fijas_y_las_extraibles_llevan_nombre_de_volumen) {
    const char* const esperado =
        "A:=3; C: (Sistema \u00F1)=5; D:=7; E: ()=6; N: (\\\\srv\\Pa\u00EDs)=8; O: (?)=8; R:=9";
    maquina_fingida maquina(una_de_cada_clase);
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistemaConNombre(), true), esperado);
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistemaConNombre(), false), esperado);
}

TEST(unidades, sin_medio_el_nombre_queda_vacio_y_se_informa) {
    maquina_fingida maquina({{'E', {.tipo = DRIVE_REMOVABLE}}});
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistemaConNombre(), true), "E: ()=6");
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.expresion, "retorno != 0");
    EXPECT_EQ(dado.detalle, "E:\\");
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistema(), true), "E:=6");
}

TEST(unidades, una_maquina_sin_unidades_da_una_lista_vacia) {
    maquina_fingida maquina({});
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistema(), true), "");
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistemaConNombre(), true), "");
}

TEST(unidades, lo_que_la_pagina_de_codigos_no_tiene_se_sustituye) {
    maquina_fingida maquina({{'N', {.tipo = DRIVE_REMOTE, .red = "\\\\srv\\\u6F22"}}});
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistema(), true), "N: (\\\\srv\\\u6F22)=8");
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistema(), false), "N: (\\\\srv\\?)=8");
}

TEST(unidades, etiqueta_segun_la_clase) {
    maquina_fingida maquina({{'B', {.tipo = DRIVE_FIXED, .volumen = "vol"}}});
    wchar_t red[] = L"\\\\srv\\x";
    for (unsigned long tipo = 0; tipo <= 12; ++tipo) {
        SCOPED_TRACE(tipo);
        const InfoDisco disco = {1, tipo, nullptr};
        const bool con_volumen = tipo == 5 || tipo == 6;
        EXPECT_EQ(u8(i_etiqueta_de_unidad(disco, false).ver()), "B:");
        ESPERA_INFORMES();
        EXPECT_EQ(u8(i_etiqueta_de_unidad(disco, true).ver()), con_volumen ? "B: (vol)" : "B:");
        const std::vector<informe> informes = toma_informes();
        EXPECT_EQ(informes.size(), tipo > 9 ? 1u : 0u);
        for (const informe& i : informes) {
            EXPECT_EQ(i.etiqueta, "lumodir (LUMODIR.DLL)");
        }
        const InfoDisco con_red = {1, tipo, red};
        EXPECT_EQ(u8(i_etiqueta_de_unidad(con_red, false).ver()), "B: (\\\\srv\\x)");
        EXPECT_EQ(u8(i_etiqueta_de_unidad(con_red, true).ver()), "B: (\\\\srv\\x)");
    }
}

TEST(unidades, NULL_se_informa) {
    EXPECT_EQ(toma(lumodir_nombreCompleto_UnidadSistema_UNICODE(nullptr)), "");
    EXPECT_EQ(toma(lumodir_nombreCompleto_UnidadSistema(nullptr)), "");
    EXPECT_EQ(lumodir_tipoDrive_UnidadSistema(nullptr), 0u);
    lumodir_destruyeEstructuraUnidadSistema(nullptr);
    UnidadSistema* ninguna = nullptr;
    lumodir_destruyeEstructuraUnidadSistema(&ninguna);
    const std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(informes[i].expresion, i < 4 ? "(unidad) != NULL" : "(*unidad) != NULL");
        EXPECT_EQ(informes[i].etiqueta, "lumodir (LUMODIR.DLL)");
    }
}

TEST(unidades, un_registro_se_destruye_con_su_etiqueta) {
    auto unidad = interno::registro<UnidadSistema>::a_cero();
    unidad->nombre = interno::cadena_w(L"C:").suelta();
    UnidadSistema* registro = unidad.suelta();
    lumodir_destruyeEstructuraUnidadSistema(&registro);
    EXPECT_EQ(registro, nullptr);
}

TEST(unidades, las_de_esta_maquina_son_las_de_la_tabla) {
    const unidades_de_wine prestadas(
        {{'A', DRIVE_REMOVABLE}, {'D', DRIVE_CDROM}, {'N', DRIVE_REMOTE}, {'R', DRIVE_RAMDISK}});
    InfoTabla tabla;
    info_GetDriveInfoSystem(&tabla);
    std::string sin_nombre;
    std::string con_nombre;
    for (unsigned short i = 0; i < tabla.numDiscos; ++i) {
        const InfoDisco& d = tabla.discos[i];
        const std::string letra(1, static_cast<char>('A' + d.disco));
        const std::string red = d.pathNetwork == nullptr ? "" : " (" + u8(d.pathNetwork) + ")";
        const std::string volumen =
            d.tipo == 5 || d.tipo == 6 ? " (" + toma(discos_nombre_volumen(d.disco)) + ")" : "";
        const std::string comienzo = (i == 0 ? "" : "; ") + letra + ":";
        const std::string final = "=" + std::to_string(d.tipo);
        sin_nombre += comienzo + red + final;
        con_nombre += comienzo + red + volumen + final;
    }
    info_LiberaTabla(&tabla);
    const std::vector<std::string> antes = toma_expresiones();
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistema(), true), sin_nombre);
    ESPERA_INFORMES();
    EXPECT_EQ(texto_de_unidades(lumodir_UnidadesDelSistemaConNombre(), true), con_nombre);
    EXPECT_EQ(toma_expresiones(), antes);
    EXPECT_NE(sin_nombre.find("C:=5"), std::string::npos) << sin_nombre;
}

// ---- The drive of the program

namespace {

std::string g_programa;  // "" makes the call fail
DWORD WINAPI programa_fingido(HMODULE modulo, wchar_t* destino, DWORD sitio) {
    EXPECT_EQ(modulo, nullptr);
    EXPECT_EQ(sitio, 260u);
    // As Windows does: cut to the buffer, terminated, and the size as the answer.
    const texto_w path = w(g_programa).substr(0, sitio - 1);
    std::memcpy(destino, path.c_str(), (path.size() + 1) * sizeof(wchar_t));
    return g_programa.size() >= sitio ? sitio : static_cast<DWORD>(path.size());
}

class disco_olvidado {
public:
    disco_olvidado() { i_olvida_disco_de_programa(); }
    ~disco_olvidado() { i_olvida_disco_de_programa(); }
};

}  // namespace

TEST(unidades, disco_de_programa) {
    const std::string maquina_larga(254, 'm');
    const struct {
        const char* que;
        std::string programa;
        int actual;
        std::string disco;
        std::vector<std::string> informes;
    } filas[] = {
        {"a drive", "C:\\Archivos de programa\\x.exe", 3, "C:", {}},
        {"as it is written", "d:\\x.exe", 3, "d:", {}},
        {"a share", "\\\\srv\\Pa\u00EDs\\bin\\x.exe", 3, "\\\\srv\\Pa\u00EDs", {}},
        {"a path with the long-path prefix", "\\\\?\\E:\\bin\\x.exe", 3, "E:", {}},
        {"a share with the long-path prefix", "\\\\?\\UNC\\srv\\x\\bin\\x.exe", 3, "\\\\srv\\x", {}},
        {"a volume without a letter", "\\\\?\\Volume{1-2}\\bin\\x.exe", 3, "\\\\?\\Volume{1-2}", {}},
        {"a path cut to the buffer", "F:\\" + std::string(500, 'x'), 3, "F:", {}},
        {"a share of 255 units fits",
         "\\\\srv\\" + std::string(249, 's') + "\\x",
         3,
         "\\\\srv\\" + std::string(249, 's'),
         {}},
        {"one of 256 does not",
         "\\\\srv\\" + std::string(250, 's') + "\\x",
         3,
         "\\\\srv\\" + std::string(249, 's'),
         {"tam < _MAX_DIR"}},
        {"not told: the current drive", "", 5, "E:", {}},
        {"not told, the last drive", "", 26, "Z:", {}},
        {"not told, and a share is current", "", 0, "", {}},
        {"not told, and no letter has such a number", "", 27, "", {}},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        const disco_olvidado sin_memoria;
        maquina_fingida maquina({}, f.actual);
        const sustituye entrada(sistema.GetModuleFileNameW, programa_fingido);
        g_programa = f.programa;
        const wchar_t* const disco = cdir_disco_de_programa_UNICODE();
        EXPECT_EQ(u8(disco), f.disco);
        const std::vector<informe> informes = toma_informes();
        ASSERT_EQ(informes.size(), f.informes.size());
        for (std::size_t i = 0; i < informes.size(); ++i) {
            EXPECT_EQ(informes[i].expresion, f.informes[i]);
            EXPECT_EQ(informes[i].etiqueta, "lumodir (LUMODIR.DLL)");
        }
        // Found out once: later answers are the same string, whatever has changed.
        g_programa = "Q:\\otro.exe";
        EXPECT_EQ(cdir_disco_de_programa_UNICODE(), disco);
        EXPECT_EQ(u8(disco), f.disco);
    }
}

TEST(unidades, disco_de_este_programa) {
    const disco_olvidado sin_memoria;
    wchar_t path[260];
    ASSERT_GT(::GetModuleFileNameW(nullptr, path, 260), 0u);
    EXPECT_EQ(u8(cdir_disco_de_programa_UNICODE()), u8(path).substr(0, 2));
}
