// The drive table: every kind of drive on a false machine, real ones of Wine's compared with what the system says,
// damaged tables, and the current directory of each drive.
#include "info.h"

#include <direct.h>

#include <array>
#include <cstddef>

#include "apoyo/unidades.hpp"
#include "companions/cadena.hpp"
#include "companions/lumospy.h"

using namespace apoyo;

static_assert(sizeof(InfoDisco) == 14 && offsetof(InfoDisco, tipo) == 2 &&
                  offsetof(InfoDisco, pathNetwork) == 6,
              "programs rely on the packed layout");
static_assert(sizeof(InfoTabla) == 10 && offsetof(InfoTabla, discos) == 2,
              "programs rely on the packed layout");

namespace {

// "A3 C5 Z8(\\srv\x)"
std::string texto_de_tabla(const InfoTabla& tabla) {
    std::string texto;
    for (unsigned i = 0; i < tabla.numDiscos; ++i) {
        const InfoDisco& d = tabla.discos[i];
        texto +=
            (i == 0 ? "" : " ") + std::string(1, static_cast<char>('A' + d.disco)) + std::to_string(d.tipo);
        if (d.pathNetwork != nullptr) {
            texto += "(" + u8(d.pathNetwork) + ")";
        }
    }
    return texto;
}

std::string tabla_de_la_maquina() {
    InfoTabla tabla = {77, reinterpret_cast<InfoDisco*>(0x77)};  // what it held is overwritten
    info_GetDriveInfoSystem(&tabla);
    const std::string texto = texto_de_tabla(tabla);
    EXPECT_EQ(tabla.discos == nullptr, tabla.numDiscos == 0);
    info_LiberaTabla(&tabla);
    EXPECT_EQ(tabla.numDiscos, 0);
    EXPECT_TRUE(tabla.discos == nullptr);
    return texto;
}

wchar_t* texto_propio(const char* texto) {
    return interno::cadena_w(interno::vista_w(w(texto))).suelta();
}

}  // namespace

TEST(info, la_tabla_tiene_un_codigo_para_cada_clase_de_unidad) {
    const std::string cabe(63, 'x');
    const std::string no_cabe(64, 'x');
    const struct {
        const char* que;
        std::map<char, unidad_fingida> maquina;
        std::string tabla;
    } filas[] = {
        {"no drives", {}, ""},
        {"the usual machine",
         {{'A', {.tipo = DRIVE_REMOVABLE}},
          {'C', {.tipo = DRIVE_FIXED}},
          {'D', {.tipo = DRIVE_CDROM}},
          {'Z', {.tipo = DRIVE_REMOTE, .red = "\\\\srv\\datos"}}},
         "A3 C5 D7 Z8(\\\\srv\\datos)"},
        {"unknown and removable: floppy drives only at A and B",
         {{'A', {.tipo = DRIVE_UNKNOWN}},
          {'B', {.tipo = DRIVE_REMOVABLE}},
          {'C', {.tipo = DRIVE_UNKNOWN}},
          {'D', {.tipo = DRIVE_REMOVABLE}}},
         "A3 B3 C6 D6"},
        {"the letter matters to no other kind",
         {{'A', {.tipo = DRIVE_FIXED}}, {'B', {.tipo = DRIVE_CDROM}}},
         "A5 B7"},
        {"memory disk and kinds still to come",
         {{'R', {.tipo = DRIVE_RAMDISK}}, {'S', {.tipo = 7}}, {'T', {.tipo = 0xFFFFFFFF}}},
         "R9 S9 T9"},
        {"a letter without a root has no entry",
         {{'C', {.tipo = DRIVE_FIXED}}, {'D', {.tipo = DRIVE_NO_ROOT_DIR}}, {'E', {.tipo = DRIVE_FIXED}}},
         "C5 E5"},
        {"a network drive that is not connected", {{'N', {.tipo = DRIVE_REMOTE}}}, "N8(?)"},
        {"a share in other alphabets",
         {{'N', {.tipo = DRIVE_REMOTE, .red = "\\\\\u00F1\\\u6F22\U0001F600"}}},
         "N8(\\\\\u00F1\\\u6F22\U0001F600)"},
        {"an empty answer is an answer", {{'N', {.tipo = DRIVE_REMOTE, .red = ""}}}, "N8()"},
        {"a share of 63 units fits",
         {{'N', {.tipo = DRIVE_REMOTE, .red = cabe.c_str()}}},
         "N8(" + cabe + ")"},
        {"one of 64 does not", {{'N', {.tipo = DRIVE_REMOTE, .red = no_cabe.c_str()}}}, "N8(?)"},
        {"only network drives have a path", {{'C', {.tipo = DRIVE_FIXED, .red = "\\\\srv\\x"}}}, "C5"},
    };
    for (const auto& f : filas) {
        maquina_fingida maquina(f.maquina);
        EXPECT_EQ(tabla_de_la_maquina(), f.tabla) << f.que;
    }
}

TEST(info, las_26_unidades_caben_y_se_preguntan_una_vez) {
    std::map<char, unidad_fingida> discos;
    std::vector<std::string> esperadas;
    for (char letra = 'A'; letra <= 'Z'; ++letra) {
        discos[letra] = {.tipo = DRIVE_FIXED};
        esperadas.push_back(std::string("GetDriveTypeW ") + letra + ":\\");
    }
    maquina_fingida maquina(discos);
    InfoTabla tabla;
    info_GetDriveInfoSystem(&tabla);
    EXPECT_EQ(maquina.preguntas, esperadas);
    ASSERT_EQ(tabla.numDiscos, 26);
    for (unsigned short i = 0; i < 26; ++i) {
        EXPECT_EQ(info_BuscaDiscoId(&tabla, i), i);
    }
    EXPECT_EQ(info_BuscaDiscoId(&tabla, 26), INFO_DISCO_AUSENTE);
    info_LiberaTabla(&tabla);
}

// Bits above the 26 letters are no drives.
TEST(info, los_bits_de_mas_no_cuentan) {
    const auto todos = []() -> DWORD { return 0xFC000001u; };
    const auto fija = [](const wchar_t*) -> UINT { return DRIVE_FIXED; };
    const sustituye presentes(interno::sistema.GetLogicalDrives, todos);
    const sustituye tipo(interno::sistema.GetDriveTypeW, fija);
    EXPECT_EQ(tabla_de_la_maquina(), "A5");
}

TEST(info, se_busca_por_indice_en_orden) {
    InfoDisco discos[] = {{0, 3, nullptr}, {2, 5, nullptr}, {3, 7, nullptr}, {25, 8, nullptr}};
    const InfoTabla tabla = {4, discos};
    const struct {
        unsigned short disco;
        unsigned short posicion;
    } filas[] = {{0, 0},      {1, 65535}, {2, 1},      {3, 2},        {4, 65535},
                 {24, 65535}, {25, 3},    {26, 65535}, {65535, 65535}};
    for (const auto& f : filas) {
        EXPECT_EQ(info_BuscaDiscoId(&tabla, f.disco), f.posicion) << f.disco;
    }
    const InfoTabla vacia = {0, nullptr};
    EXPECT_EQ(info_BuscaDiscoId(&vacia, 0), 65535);
    // The walk stops at the first greater index: order is relied on.
    InfoDisco desorden[] = {{5, 5, nullptr}, {2, 5, nullptr}};
    const InfoTabla desordenada = {2, desorden};
    EXPECT_EQ(info_BuscaDiscoId(&desordenada, 2), 65535);
    EXPECT_EQ(info_BuscaDiscoId(&desordenada, 5), 0);
}

TEST(info, texto_de_cada_unidad) {
    for (unsigned short i = 0; i < 26; ++i) {
        const InfoDisco disco = {i, 5, nullptr};
        EXPECT_EQ(toma(info_GetTxtDrive(&disco)), std::string(1, static_cast<char>('A' + i)) + ":");
    }
    for (const int indice : {26, 255, 256, 65535}) {
        const InfoDisco disco = {static_cast<unsigned short>(indice), 5, nullptr};
        EXPECT_EQ(toma(info_GetTxtDrive(&disco)), "");
        ESPERA_INFORMES("disco->disco < i_NUM_MAX_UNIDADES");
    }
}

TEST(info, NULL_se_informa) {
    info_GetDriveInfoSystem(nullptr);
    EXPECT_EQ(info_BuscaDiscoId(nullptr, 2), 65535);
    EXPECT_EQ(toma(info_GetTxtDrive(nullptr)), "");
    info_LiberaTabla(nullptr);
    const std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 4u);
    for (const std::size_t i : {0u, 1u, 3u}) {
        EXPECT_EQ(informes[i].expresion, "(tabla) != NULL");
    }
    EXPECT_EQ(informes[2].expresion, "(disco) != NULL");
    for (const informe& i : informes) {
        EXPECT_EQ(i.etiqueta, "discos (LUMODIR.DLL)");
    }
}

TEST(info, una_tabla_sin_matriz_se_informa) {
    InfoTabla tabla = {3, nullptr};
    EXPECT_EQ(info_BuscaDiscoId(&tabla, 0), 65535);
    info_LiberaTabla(&tabla);
    ESPERA_INFORMES("tabla->discos != NULL", "tabla->discos != NULL");
    EXPECT_EQ(tabla.numDiscos, 0);
    EXPECT_TRUE(tabla.discos == nullptr);
}

TEST(info, una_matriz_sin_unidades_se_informa_y_no_se_libera) {
    InfoDisco ajeno = {0, 8, nullptr};
    InfoTabla tabla = {0, &ajeno};
    info_LiberaTabla(&tabla);
    ESPERA_INFORMES("tabla->discos == NULL");
    EXPECT_TRUE(tabla.discos == nullptr);
    info_LiberaTabla(&tabla);  // an empty table: nothing to say
}

TEST(info, un_path_en_una_unidad_que_no_es_de_red_se_informa_y_no_se_libera) {
    wchar_t* ajeno = texto_propio("\\\\srv\\ajeno");
    InfoTabla tabla = {3, static_cast<InfoDisco*>(lumospy_nousar_calloc(3, sizeof(InfoDisco)))};
    tabla.discos[0] = {2, INFO_TIPO_FIJO, ajeno};
    tabla.discos[1] = {3, INFO_TIPO_RED, texto_propio("\\\\srv\\x")};
    tabla.discos[2] = {4, INFO_TIPO_OTRO, ajeno};
    info_LiberaTabla(&tabla);
    ESPERA_INFORMES("tabla->discos[i].pathNetwork == NULL", "tabla->discos[i].pathNetwork == NULL");
    EXPECT_EQ(tabla.numDiscos, 0);
    EXPECT_TRUE(tabla.discos == nullptr);
    EXPECT_EQ(toma(ajeno), "\\\\srv\\ajeno");
}

TEST(info, la_tabla_de_esta_maquina_como_la_dice_el_sistema) {
    // Under Wine every kind of drive is put there first.
    const unidades_de_wine prestadas({{'A', DRIVE_REMOVABLE},
                                      {'D', DRIVE_CDROM},
                                      {'N', DRIVE_REMOTE},
                                      {'R', DRIVE_RAMDISK},
                                      {'U', DRIVE_REMOVABLE}});
    std::string esperada;
    for (unsigned i = 0; i < 26; ++i) {
        const wchar_t raiz[] = {static_cast<wchar_t>(L'A' + i), L':', L'\\', L'\0'};
        const wchar_t nombre[] = {raiz[0], L':', L'\0'};
        if ((::GetLogicalDrives() >> i & 1) == 0 || ::GetDriveTypeW(raiz) == DRIVE_NO_ROOT_DIR) {
            continue;
        }
        constexpr std::array<unsigned, 7> codigos = {6, 0, 6, 5, 8, 7, 9};
        const UINT tipo = ::GetDriveTypeW(raiz);
        const unsigned codigo =
            i < 2 && (tipo == DRIVE_UNKNOWN || tipo == DRIVE_REMOVABLE) ? 3 : codigos[tipo];
        esperada += (esperada.empty() ? "" : " ") + std::string(1, static_cast<char>('A' + i)) +
                    std::to_string(codigo);
        if (tipo == DRIVE_REMOTE) {
            wchar_t red[64] = {};
            DWORD sitio = 64;
            esperada += ::WNetGetConnectionW(nombre, red, &sitio) == NO_ERROR ? "(" + u8(red) + ")" : "(?)";
        }
    }
    EXPECT_EQ(tabla_de_la_maquina(), esperada);
    if (!prestadas.hay()) {
        GTEST_SKIP() << "no Wine: only the drives that the machine has were compared";
    }
    const std::string con_todas = " " + esperada + " ";
    for (const char* unidad : {" A3 ", " C5 ", " D7 ", " N8(?) ", " R9 ", " U6 "}) {
        EXPECT_NE(con_todas.find(unidad), std::string::npos) << unidad << "in" << con_todas;
    }
}

TEST(info, directorio_actual_con_bufer_y_sin_el) {
    const std::string cabe = "C:\\" + std::string(256, 'd');  // 259 units and the terminator
    const std::string no_cabe = cabe + "d";
    const struct {
        const char* que;
        int unidad;
        const char* directorio;  // NULL: the answer is NULL
    } filas[] = {
        {"current drive", 0, "C:\\datos\\\u00F1\u6F22\U0001F600"},
        {"the current drive by number", 3, "C:\\datos\\\u00F1\u6F22\U0001F600"},
        {"a root keeps its separator", 1, "A:\\"},
        {"a share as a drive", 14, "N:\\x"},
        {"259 units fit", 4, cabe.c_str()},
        {"260 do not", 5, nullptr},
        {"a drive without a directory", 6, nullptr},
        {"a letter without a drive", 7, nullptr},
        {"a drive that has just gone", 8, nullptr},
        {"a drive of no kind that the system knows", 9, nullptr},
        {"Z", 26, "Z:\\"},
        {"no letter", 27, nullptr},
        {"no number", -1, nullptr},
        {"far away", 0x7FFFFFFF, nullptr},
    };
    maquina_fingida maquina({{'A', {.tipo = 2, .directorio = "A:\\"}},
                             {'C', {.tipo = 3, .directorio = "C:\\datos\\\u00F1\u6F22\U0001F600"}},
                             {'D', {.tipo = 3, .directorio = cabe.c_str()}},
                             {'E', {.tipo = 3, .directorio = no_cabe.c_str()}},
                             {'F', {.tipo = 3}},
                             {'H', {.tipo = DRIVE_NO_ROOT_DIR, .directorio = "H:\\x"}},
                             {'I', {.tipo = DRIVE_UNKNOWN, .directorio = "I:\\x"}},
                             {'N', {.tipo = 4, .directorio = "N:\\x"}},
                             {'Z', {.tipo = 3, .directorio = "Z:\\"}}});
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        const std::string esperado = f.directorio == nullptr ? "(NULL)" : f.directorio;
        EXPECT_EQ(toma(info_GetActualDirectorio_compatible_chdir(f.unidad, nullptr, 0)), esperado);
        wchar_t bufer[300];
        bufer[0] = L'#';
        bufer[1] = L'\0';
        wchar_t* const dado = info_GetActualDirectorio_compatible_chdir(f.unidad, bufer, 300);
        EXPECT_EQ(dado, f.directorio == nullptr ? nullptr : bufer);
        EXPECT_EQ(u8(bufer), f.directorio == nullptr ? "#" : esperado);
    }
}

TEST(info, un_bufer_pequenyo_se_informa_y_no_se_desborda) {
    maquina_fingida maquina({{'C', {.tipo = 3, .directorio = "C:\\abc"}}});
    constexpr unsigned long longitud = 6;
    for (unsigned long nbuf = 0; nbuf <= longitud + 2; ++nbuf) {
        SCOPED_TRACE(nbuf);
        wchar_t bufer[16];
        for (wchar_t& c : bufer) {
            c = L'#';
        }
        EXPECT_EQ(info_GetActualDirectorio_compatible_chdir(3, bufer, nbuf), bufer);
        if (nbuf > longitud) {
            EXPECT_EQ(u8(bufer), "C:\\abc");
        } else {
            const informe dado = toma_el_informe();
            EXPECT_EQ(dado.expresion, "nbuf > len");
            EXPECT_EQ(dado.etiqueta, "discos (LUMODIR.DLL)");
            if (nbuf > 0) {
                EXPECT_EQ(u8(bufer), std::string("C:\\abc").substr(0, nbuf - 1));
            }
        }
        for (unsigned long i = std::max(nbuf, 0ul); i < 16; ++i) {
            EXPECT_EQ(bufer[i], L'#') << "past the buffer, at " << i;
        }
    }
}

TEST(info, un_tamanyo_sin_bufer_se_informa) {
    maquina_fingida maquina({{'C', {.tipo = 3, .directorio = "C:\\abc"}}});
    EXPECT_EQ(toma(info_GetActualDirectorio_compatible_chdir(0, nullptr, 260)), "C:\\abc");
    ESPERA_INFORMES("nbuf == 0");
}

TEST(info, los_directorios_actuales_de_esta_maquina) {
    for (int unidad = 0; unidad <= 26; ++unidad) {
        const wchar_t raiz[] = {static_cast<wchar_t>(L'A' + unidad - 1), L':', L'\\', L'\0'};
        if (unidad != 0 && ::GetDriveTypeW(raiz) == DRIVE_NO_ROOT_DIR) {
            EXPECT_EQ(toma(info_GetActualDirectorio_compatible_chdir(unidad, nullptr, 0)), "(NULL)");
            continue;
        }
        wchar_t directorio[260];
        const bool hay = ::_wgetdcwd(unidad, directorio, 260) != nullptr;
        EXPECT_EQ(toma(info_GetActualDirectorio_compatible_chdir(unidad, nullptr, 0)),
                  hay ? u8(directorio) : "(NULL)");
    }
}
