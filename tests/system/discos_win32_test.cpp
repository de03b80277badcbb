// Questions about one drive: every kind of drive on a false machine, and the machine's own compared with what the
// system says.
#include "discos.h"

#include "apoyo/unidades.hpp"

using namespace apoyo;

namespace {

const std::map<char, unidad_fingida> de_todo = {
    {'A', {.tipo = DRIVE_REMOVABLE, .volumen = "", .dispositivo = "\\Device\\Floppy0"}},
    {'B', {.tipo = DRIVE_UNKNOWN}},
    {'C',
     {.tipo = DRIVE_FIXED, .volumen = "Sistema \u00F1\u6F22\U0001F600", .dispositivo = "\\Device\\Vol1"}},
    {'D', {.tipo = DRIVE_CDROM, .dispositivo = "\\Device\\CdRom0"}},
    {'E', {.tipo = DRIVE_REMOVABLE, .volumen = "USB"}},
    {'N', {.tipo = DRIVE_REMOTE, .volumen = "datos", .dispositivo = "\\Device\\Redirector\\;N:\\srv\\x"}},
    {'R', {.tipo = DRIVE_RAMDISK}},
    {'S', {.tipo = DRIVE_FIXED, .dispositivo = "\\??\\C:\\datos"}},
    {'T', {.tipo = DRIVE_FIXED, .dispositivo = "\\??\\UNC\\srv\\x"}},
    {'U', {.tipo = DRIVE_FIXED, .dispositivo = "\\??"}},
    {'V', {.tipo = DRIVE_NO_ROOT_DIR}},
    {'Z', {.tipo = DRIVE_FIXED, .dispositivo = "x\\??\\C:"}},
};

// Longer than any buffer: cannot be told.
const std::string larguisimo(2000, 'x');

}  // namespace

TEST(discos, solo_una_unidad_de_red_no_es_local) {
    maquina_fingida maquina(de_todo);
    for (char letra = 'A'; letra <= 'Z'; ++letra) {
        const unsigned short esperado = letra == 'N' ? 0 : 1;  // a letter without drive is local too
        EXPECT_EQ(discos_es_unidad_local(static_cast<wchar_t>(letra)), esperado) << letra;
    }
    EXPECT_EQ(maquina.preguntas.front(), "GetDriveTypeW A:\\");
    EXPECT_EQ(maquina.preguntas.back(), "GetDriveTypeW Z:\\");
}

TEST(discos, la_letra_de_una_unidad_local_va_en_cualquier_caja) {
    const auto tipo = [](const wchar_t* raiz) -> UINT {
        return raiz[0] == L'n' || raiz[0] == L'N' ? DRIVE_REMOTE : DRIVE_FIXED;
    };
    const sustituye entrada(interno::sistema.GetDriveTypeW, tipo);
    EXPECT_EQ(discos_es_unidad_local(L'n'), 0);
    EXPECT_EQ(discos_es_unidad_local(L'N'), 0);
    EXPECT_EQ(discos_es_unidad_local(L'a'), 1);
    EXPECT_EQ(discos_es_unidad_local(L'z'), 1);
}

TEST(discos, lo_que_no_es_letra_se_informa) {
    maquina_fingida maquina(de_todo);
    for (const wchar_t c :
         {L'\0', L'1', L'@', L'[', L'`', L'{', L':', L'\\', L'\u00C0', L'\u0143', L'\u0131'}) {
        EXPECT_EQ(discos_es_unidad_local(c), 1) << static_cast<int>(c);
        EXPECT_EQ(discos_es_unidad_subst(c), 0) << static_cast<int>(c);
        const std::vector<informe> informes = toma_informes();
        ASSERT_EQ(informes.size(), 2u);
        EXPECT_EQ(informes[0].expresion,
                  "(unidad >= L'A' && unidad <= L'Z') || (unidad >= L'a' && unidad <= L'z')");
        EXPECT_EQ(informes[1].expresion, "unidad2 >= L'A' && unidad2 <= L'Z'");
        EXPECT_EQ(informes[0].etiqueta, "discos (LUMODIR.DLL)");
        EXPECT_EQ(informes[1].etiqueta, "discos (LUMODIR.DLL)");
    }
}

TEST(discos, una_unidad_subst_tiene_un_path_por_dispositivo) {
    maquina_fingida maquina(de_todo);
    for (char letra = 'A'; letra <= 'Z'; ++letra) {
        const unsigned short esperado = letra == 'S' || letra == 'T' ? 1 : 0;
        std::string pregunta = "QueryDosDeviceW X:";
        pregunta[pregunta.size() - 2] = letra;
        EXPECT_EQ(discos_es_unidad_subst(static_cast<wchar_t>(letra)), esperado) << letra;
        EXPECT_EQ(maquina.preguntas.back(), pregunta);
        // A small letter is asked as its capital.
        EXPECT_EQ(discos_es_unidad_subst(static_cast<wchar_t>(letra - 'A' + 'a')), esperado) << letra;
        EXPECT_EQ(maquina.preguntas.back(), pregunta);
    }
}

TEST(discos, nombre_de_volumen) {
    maquina_fingida maquina(de_todo);
    EXPECT_EQ(toma(discos_nombre_volumen(2)), "Sistema \u00F1\u6F22\U0001F600");
    EXPECT_EQ(toma(discos_nombre_volumen(0)), "") << "a volume without a name is no failure";
    EXPECT_EQ(toma(discos_nombre_volumen(4)), "USB");
    EXPECT_EQ(toma(discos_nombre_volumen(13)), "datos");
    EXPECT_EQ(maquina.preguntas.back(), "GetVolumeInformationW N:\\");
}

TEST(discos, un_volumen_que_no_se_sabe_da_vacio_y_se_informa) {
    maquina_fingida maquina(
        {{'D', {.tipo = DRIVE_CDROM}}, {'E', {.tipo = DRIVE_FIXED, .volumen = larguisimo.c_str()}}});
    const struct {
        unsigned short disco;
        const char* raiz;
    } filas[] = {{3, "D:\\"}, {4, "E:\\"}, {25, "Z:\\"}, {0, "A:\\"}};
    for (const auto& f : filas) {
        EXPECT_EQ(toma(discos_nombre_volumen(f.disco)), "") << f.raiz;
        const informe dado = toma_el_informe();
        EXPECT_EQ(dado.expresion, "retorno != 0");
        EXPECT_EQ(dado.detalle, f.raiz);
        EXPECT_EQ(dado.etiqueta, "discos (LUMODIR.DLL)");
    }
}

TEST(discos, un_indice_por_encima_de_25_se_informa) {
    maquina_fingida maquina(de_todo);
    for (const int disco : {26, 27, 255, 256, 65535}) {
        EXPECT_EQ(toma(discos_nombre_volumen(static_cast<unsigned short>(disco))), "");
        ESPERA_INFORMES("disco < i_NUM_MAX_UNIDADES");
    }
    EXPECT_TRUE(maquina.preguntas.empty());
}

TEST(discos, las_unidades_de_esta_maquina_como_las_dice_el_sistema) {
    // Under Wine every kind of drive is put there first.
    const unidades_de_wine prestadas(
        {{'A', DRIVE_REMOVABLE}, {'D', DRIVE_CDROM}, {'N', DRIVE_REMOTE}, {'R', DRIVE_RAMDISK}});
    if (prestadas.hay()) {
        EXPECT_EQ(discos_es_unidad_local(L'N'), 0);
        EXPECT_EQ(discos_es_unidad_local(L'R'), 1);
    }
    for (unsigned short i = 0; i < 26; ++i) {
        const auto letra = static_cast<wchar_t>(L'A' + i);
        const wchar_t raiz[] = {letra, L':', L'\\', L'\0'};
        const wchar_t nombre[] = {letra, L':', L'\0'};
        const auto minuscula = static_cast<wchar_t>(letra - L'A' + L'a');
        EXPECT_EQ(discos_es_unidad_local(letra), ::GetDriveTypeW(raiz) == DRIVE_REMOTE ? 0 : 1) << u8(raiz);
        EXPECT_EQ(discos_es_unidad_local(minuscula), discos_es_unidad_local(letra)) << u8(raiz);
        wchar_t destino[254] = {};
        ::QueryDosDeviceW(nombre, destino, 254);
        const bool subst = u8(destino).substr(0, 4) == "\\??\\";
        EXPECT_EQ(discos_es_unidad_subst(letra), subst ? 1 : 0) << u8(raiz);
        EXPECT_EQ(discos_es_unidad_subst(minuscula), subst ? 1 : 0) << u8(raiz);
        wchar_t volumen[1024] = {};
        const BOOL dicho =
            ::GetVolumeInformationW(raiz, volumen, 1024, nullptr, nullptr, nullptr, nullptr, 0);
        EXPECT_EQ(toma(discos_nombre_volumen(i)), dicho ? u8(volumen) : "") << u8(raiz);
        EXPECT_EQ(toma_expresiones().size(), dicho ? 0u : 1u) << u8(raiz);
    }
}

TEST(discos, una_sustitucion_de_verdad) {
    wchar_t letra = L'G';
    while (letra <= L'Z' && (::GetLogicalDrives() >> (letra - L'A') & 1) != 0) {
        ++letra;
    }
    const wchar_t nombre[] = {letra, L':', L'\0'};
    EXPECT_EQ(discos_es_unidad_subst(letra), 0);
    ASSERT_TRUE(::DefineDosDeviceW(0, nombre, L"C:\\windows"));
    EXPECT_EQ(discos_es_unidad_subst(letra), 1);
    EXPECT_EQ(discos_es_unidad_subst(static_cast<wchar_t>(letra - L'A' + L'a')), 1);
    EXPECT_EQ(discos_es_unidad_local(letra), 1);
    ASSERT_TRUE(::DefineDosDeviceW(DDD_REMOVE_DEFINITION, nombre, nullptr));
    EXPECT_EQ(discos_es_unidad_subst(letra), 0);
}

// The call that an empty card reader answers with a dialog unless it is told not to; the false machine sees to the mode
// of the thread in every other test, too.
TEST(discos, una_unidad_sin_medio_no_saca_ningun_dialogo) {
    maquina_fingida maquina({{'E', {.tipo = DRIVE_REMOVABLE}}});
    EXPECT_EQ(toma(discos_nombre_volumen(4)), "");
    ESPERA_INFORMES("retorno != 0");
    EXPECT_EQ(discos_es_unidad_local(L'E'), 1);
    EXPECT_EQ(maquina.preguntas,
              (std::vector<std::string>{"GetVolumeInformationW E:\\", "GetDriveTypeW E:\\"}));
}

// What its device does not fit into the room that is offered is no substitution to be told.
TEST(discos, una_unidad_subst_de_un_directorio_muy_largo_no_se_conoce) {
    const std::string cabe = "\\??\\C:\\" + std::string(246, 'x');
    const std::string no_cabe = cabe + "x";
    maquina_fingida maquina({{'S', {.tipo = DRIVE_FIXED, .dispositivo = cabe.c_str()}},
                             {'T', {.tipo = DRIVE_FIXED, .dispositivo = no_cabe.c_str()}}});
    EXPECT_EQ(discos_es_unidad_subst(L'S'), 1);
    EXPECT_EQ(discos_es_unidad_subst(L'T'), 0);
}
