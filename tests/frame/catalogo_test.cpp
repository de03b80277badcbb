// Tests of the message catalogue: the records as data that stands here a second time (builder, id, file,
// line, Spanish and English text), and the rules that hold for every record.
//
// Promises: a change of any Spanish or English text, id, line or slot rule turns a test red; a translation
// that was put into the wrong slot does, too, where script or vocabulary tell the languages apart.
// Cannot promise: that a translation is good. That takes a reader of the language.
//
// Texts are compared through std::u16string: the C library's wide functions expect 32-bit characters here.

#include "frame/catalogo.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace interno;

std::u16string a_u16(const wchar_t* texto) {
    std::u16string copia;
    for (; *texto != L'\0'; ++texto) {
        copia.push_back(static_cast<char16_t>(*texto));
    }
    return copia;
}

// For failure messages; the catalogue stays inside the basic plane.
std::string a_utf8(std::u16string_view texto) {
    std::string bytes;
    for (const char16_t unidad : texto) {
        if (unidad < 0x80) {
            bytes.push_back(static_cast<char>(unidad));
        } else if (unidad < 0x800) {
            bytes.push_back(static_cast<char>(0xC0 | (unidad >> 6)));
            bytes.push_back(static_cast<char>(0x80 | (unidad & 0x3F)));
        } else {
            bytes.push_back(static_cast<char>(0xE0 | (unidad >> 12)));
            bytes.push_back(static_cast<char>(0x80 | ((unidad >> 6) & 0x3F)));
            bytes.push_back(static_cast<char>(0x80 | (unidad & 0x3F)));
        }
    }
    return bytes;
}

std::string a_utf8(const wchar_t* texto) {
    return a_utf8(a_u16(texto));
}

bool contiene(std::u16string_view texto, std::u16string_view parte) {
    return texto.find(parte) != std::u16string_view::npos;
}

// The record is filled with rubbish first, so that a field the builder forgets is seen.
RegistroMensaje registro_construido(ConstructorMensaje construye) {
    RegistroMensaje registro;
    std::memset(&registro, 0xA5, sizeof registro);
    construye(&registro);
    return registro;
}

std::u16string sin_prefijo(const RegistroMensaje& registro, std::uint32_t ranura) {
    return a_u16(registro.texto[ranura]).substr(registro.longitud_prefijo);
}

// ---- the 28 records

struct fila_mensaje {
    const char* nombre;
    ConstructorMensaje construye;
    unsigned long id;
    std::uint32_t longitud_prefijo;
    const char* fichero_mensajes;
    std::uint32_t linea;
    const wchar_t* espanol;
    const wchar_t* ingles;
};

#define CONSTRUCTOR(mensaje) .nombre = #mensaje, .construye = mensaje

// The formatter stays out: the texts, one below the other, are what makes the long rows readable.
// clang-format off
const fila_mensaje filas[] = {
    {CONSTRUCTOR(i_msg_31827_no_existe_directorio),
     .id = 31827, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 142,
     .espanol = L"No existe el directorio '%s'.",
     .ingles = L"Directory '%s' does not exist."},
    {CONSTRUCTOR(i_msg_53948_no_se_puede_crear_directorio),
     .id = 53948, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 4,
     .espanol = L"No se puede crear el directorio '%s'",
     .ingles = L"Cannot create the directory '%s'"},
    {CONSTRUCTOR(i_msg_53949_caracteres_no_validos_en_nombre),
     .id = 53949, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 50,
     .espanol = L"Existen caracteres no válidos en el nombre '%s'",
     .ingles = L"There are invalid characters in the name '%s'"},
    {CONSTRUCTOR(i_msg_53950_no_se_puede_borrar_fichero_que_no_existe),
     .id = 53950, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 180,
     .espanol = L"No se puede borrar el fichero '%s' (no existe)",
     .ingles = L"Cannot delete the file '%s' (it does not exist)"},
    {CONSTRUCTOR(i_msg_53951_no_se_puede_borrar_fichero),
     .id = 53951, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 228,
     .espanol = L"No se puede borrar el fichero '%s'",
     .ingles = L"Cannot delete the file '%s'"},
    {CONSTRUCTOR(i_msg_53951_no_se_puede_renombrar),
     .id = 53951, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 345,
     .espanol = L"No se puede renombrar el fichero",
     .ingles = L"The file cannot be renamed"},
    {CONSTRUCTOR(i_msg_53952_nombre_directorio_incorrecto),
     .id = 53952, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 375,
     .espanol = L"El nombre del directorio '%s' es incorrecto",
     .ingles = L"The directory name '%s' is incorrect"},
    {CONSTRUCTOR(i_msg_53953_no_se_puede_borrar_directorio_que_no_existe),
     .id = 53953, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 421,
     .espanol = L"No se puede borrar el directorio '%s' (no existe)",
     .ingles = L"Cannot delete the directory '%s' (it does not exist)"},
    {CONSTRUCTOR(i_msg_53954_no_se_puede_borrar_directorio),
     .id = 53954, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 469,
     .espanol = L"No se puede borrar el directorio '%s'",
     .ingles = L"Unable to delete the directory '%s'"},
    {CONSTRUCTOR(i_msg_53955_fichero_no_correcto),
     .id = 53955, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 517,
     .espanol = L"El fichero '%s' no es correcto",
     .ingles = L"The file '%s' is not correct"},
    {CONSTRUCTOR(i_msg_53957_punto_al_principio_o_final),
     .id = 53957, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 563,
     .espanol = L"Se encontró un punto al principio o final del path: '%s'",
     .ingles = L"A point was found at beginning or end of the path: '%s'"},
    {CONSTRUCTOR(i_msg_53958_unidad_debe_ser_letra),
     .id = 53958, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 612,
     .espanol = L"El nombre de la unidad debe ser una letra.",
     .ingles = L"The name of the disk drive must be a letter."},
    {CONSTRUCTOR(i_msg_53959_unidad_de_red_incompleta),
     .id = 53959, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 659,
     .espanol = L"El nombre de la Unidad de Red está incompleto.",
     .ingles = L"The name of the network drive is incomplete."},
    {CONSTRUCTOR(i_msg_53960_sin_nombre_de_directorio),
     .id = 53960, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 706,
     .espanol = L"No ha especificado ningún nombre de directorio",
     .ingles = L"You have not specified any directory name"},
    {CONSTRUCTOR(i_msg_53961_no_se_puede_proteger_fichero),
     .id = 53961, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 783,
     .espanol = L"No se puede proteger el fichero '%s'",
     .ingles = L"It is not possible to lock the file '%s'"},
    {CONSTRUCTOR(i_msg_53962_no_se_puede_desproteger_fichero),
     .id = 53962, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 821,
     .espanol = L"No se puede desproteger el fichero '%s'",
     .ingles = L"It is not possible to unlock the file '%s'"},
    {CONSTRUCTOR(i_msg_53963_esperando_acceso_a_directorio),
     .id = 53963, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 859,
     .espanol = L"Esperando acceso al directorio '%s'",
     .ingles = L"Waiting for access to directory '%s'"},
    {CONSTRUCTOR(i_msg_74876_no_existe_fichero),
     .id = 74876, .longitud_prefijo = 7, .fichero_mensajes = "lumodir.msg", .linea = 96,
     .espanol = L"No existe el fichero '%s'",
     .ingles = L"This file '%s' does not exist"},
    {CONSTRUCTOR(i_msg_74876_no_existe_fichero_sin_comillas),
     .id = 74876, .longitud_prefijo = 7, .fichero_mensajes = "ficheros.msg", .linea = 4,
     .espanol = L"No existe el fichero %s",
     .ingles = L"This file %s does not exist"},
    {CONSTRUCTOR(i_msg_158391_no_se_puede_abrir_para_cambiar_fecha),
     .id = 158391, .longitud_prefijo = 8, .fichero_mensajes = "timefich.msg", .linea = 4,
     .espanol = L"No puede abrirse el fichero '%s' para modificar su fecha.",
     .ingles = L"The '%s' file cannot be opened to modify its date."},
    {CONSTRUCTOR(i_msg_374376_path_demasiado_largo),
     .id = 374376, .longitud_prefijo = 8, .fichero_mensajes = "lumodir.msg", .linea = 752,
     .espanol = L"El path '%s' supera la longitud máxima permitida (%ld).",
     .ingles = L"The length of path '%s' exceeds the maximum permitted length (%ld)."},
    {CONSTRUCTOR(i_msg_385690_no_se_puede_crear_temporal),
     .id = 385690, .longitud_prefijo = 8, .fichero_mensajes = "lumodir.msg", .linea = 897,
     .espanol = L"Windows no permite crear un fichero temporal en el directorio establecido para ello (%s).",
     .ingles = L"Windows does not allow a temporary file to be created in the directory that has been "
               L"established for it (%s)."},
    {CONSTRUCTOR(i_msg_385691_codigo_de_error_de_windows),
     .id = 385691, .longitud_prefijo = 8, .fichero_mensajes = "lumodir.msg", .linea = 934,
     .espanol = L"El código de error devuelto por Windows es '%s'.",
     .ingles = L"The error code returned by Windows is '%s'."},
    {CONSTRUCTOR(i_msg_385692_modificar_variable_temp),
     .id = 385692, .longitud_prefijo = 8, .fichero_mensajes = "lumodir.msg", .linea = 962,
     .espanol = L"Para solucionar este problema, puede modificar la variable de entorno 'TEMP' en Windows y "
                L"establecer el directorio donde se deben crear los ficheros temporales del programa.",
     .ingles = L"To solve this problem, you can modify the 'TEMP' environment variable in Windows and "
               L"establish the directory where temporary program files should be created."},
    {CONSTRUCTOR(i_msg_401224_fichero_en_uso_o_sin_permiso),
     .id = 401224, .longitud_prefijo = 8, .fichero_mensajes = "lumodir.msg", .linea = 277,
     .espanol = L"Es posible que el fichero esté siendo usado por otra aplicación o bien que no tenga "
                L"permiso de escritura sobre este directorio.",
     .ingles = L"It may be that it is being used by another application or you do not have sufficient "
               L"privileges to write to this directory."},
    {CONSTRUCTOR(i_msg_402847_borrar_ficheros_o_modificar_temp),
     .id = 402847, .longitud_prefijo = 8, .fichero_mensajes = "lumodir.msg", .linea = 1014,
     .espanol = L"Para resolver este problema, puede eliminar los archivos ubicados en el directorio '%s' o "
                L"modificar la variable de entorno 'TEMP' de Windows para establecer el directorio donde se "
                L"crearán los archivos temporales del programa.",
     .ingles = L"To resolve this problem, you can delete the files located in the '%s' directory or modify "
               L"the Windows 'TEMP' environment variable to set the directory where the program's temporary "
               L"files will be created."},
    {CONSTRUCTOR(i_msg_404522_sin_permiso_en_directorio),
     .id = 404522, .longitud_prefijo = 8, .fichero_mensajes = "lumodir.msg", .linea = 1075,
     .espanol = L"No es posible escribir en el directorio '%s' porque no tiene permiso de escritura. Si "
                L"está intentando acceder a una unidad de red, verifique su permiso de escritura.",
     .ingles = L"Unable to write to the directory '%s' because you do not have write permission. If you are "
               L"trying to access a network drive, please check that you have write permission."},
    {CONSTRUCTOR(i_msg_404523_fichero_sin_permiso_de_escritura),
     .id = 404523, .longitud_prefijo = 8, .fichero_mensajes = "lumodir.msg", .linea = 1131,
     .espanol = L"El fichero no tiene permiso de escritura.",
     .ingles = L"The file does not have write permission."},
};
// clang-format on

#undef CONSTRUCTOR

void PrintTo(const fila_mensaje& fila, std::ostream* salida) {
    *salida << fila.nombre << " (" << fila.fichero_mensajes << ":" << fila.linea << ")";
}

// ---- the slots

enum class respaldo { ninguno, regional, espanol, ingles };

struct fila_ranura {
    std::uint32_t ranura;
    respaldo sin_texto_propio;
    const wchar_t* anuncio_31827;  // "Directory '%s' does not exist." where the language has its own
};

const fila_ranura ranuras[] = {
    {0, respaldo::ninguno, L"No existe el directorio '%s'."},
    {1, respaldo::ninguno, L"Le répertoire '%s' n'existe pas."},
    {2, respaldo::ninguno, L"O diretório '%s' não existe."},
    {3, respaldo::ninguno, L"O diretório '%s' não existe."},
    {4, respaldo::ninguno, L"El directori '%s' no existeix."},
    {5, respaldo::ninguno, L"La directory '%s' non esiste."},
    {6, respaldo::regional, nullptr},
    {7, respaldo::regional, nullptr},
    {8, respaldo::ninguno, L"Directory '%s' does not exist."},
    {9, respaldo::espanol, nullptr},  // Galician
    {10, respaldo::ingles, nullptr},  // Bulgarian, among slots that fall back to Spanish
    {11, respaldo::ninguno, L"Directorul '%s' nu există."},
    {12, respaldo::ninguno, L"目录 '%s' 不存在。"},
    {13, respaldo::ninguno, L"Das Verzeichnis '%s' ist nicht vorhanden."},
    {14, respaldo::espanol, nullptr},
    {15, respaldo::espanol, nullptr},
    {16, respaldo::espanol, nullptr},
    {17, respaldo::espanol, nullptr},
    {18, respaldo::ninguno, L"Каталог '%s' не существует."},
    {19, respaldo::espanol, nullptr},
    {20, respaldo::espanol, nullptr},
    {21, respaldo::espanol, nullptr},
    {22, respaldo::espanol, nullptr},
    {23, respaldo::espanol, nullptr},
    {24, respaldo::regional, nullptr},
    {25, respaldo::ingles, nullptr},
    {26, respaldo::ingles, nullptr},
    {27, respaldo::ingles, nullptr},
    {28, respaldo::ingles, nullptr},
    {29, respaldo::ingles, nullptr},
    {30, respaldo::ingles, nullptr},
    {31, respaldo::ninguno, L"Katalog '%s' nie istnieje."},
    {32, respaldo::ingles, nullptr},
    {33, respaldo::ninguno, L"'%s' dizini mevcut değil."},
    {34, respaldo::ingles, nullptr},
    {35, respaldo::ingles, nullptr},
    {36, respaldo::ingles, nullptr},
    {37, respaldo::ingles, nullptr},
    {38, respaldo::ingles, nullptr},
    {39, respaldo::ninguno, L"ディレクトリ '%s' は存在しません。"},
    {40, respaldo::ingles, nullptr},
};

const std::uint32_t ranuras_traducidas[] = {1, 2, 3, 4, 5, 11, 12, 13, 18, 31, 33, 39};

// ---- one record after the other

class Mensaje : public testing::TestWithParam<fila_mensaje> {};

INSTANTIATE_TEST_SUITE_P(Catalogo, Mensaje, testing::ValuesIn(filas),
                         [](const testing::TestParamInfo<fila_mensaje>& fila) {
                             return std::string(fila.param.nombre);
                         });

TEST_P(Mensaje, LlenaTodasLasRanurasYElFinal) {
    RegistroMensaje relleno_ff;
    std::memset(&relleno_ff, 0xFF, sizeof relleno_ff);
    GetParam().construye(&relleno_ff);
    const RegistroMensaje relleno_a5 = registro_construido(GetParam().construye);

    EXPECT_EQ(relleno_a5.fin, nullptr);
    EXPECT_EQ(relleno_ff.fin, nullptr);
    for (std::uint32_t ranura = 0; ranura < num_ranuras_idioma; ++ranura) {
        EXPECT_NE(relleno_a5.texto[ranura], nullptr) << "slot " << ranura;
        // What was in the record before leaves no trace, and the texts are constants: same pointers.
        EXPECT_EQ(relleno_a5.texto[ranura], relleno_ff.texto[ranura]) << "slot " << ranura;
    }
}

TEST_P(Mensaje, FicheroLineaYPrefijo) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    EXPECT_STREQ(registro.fichero_mensajes, GetParam().fichero_mensajes);
    EXPECT_EQ(registro.linea, GetParam().linea);
    EXPECT_EQ(registro.longitud_prefijo, GetParam().longitud_prefijo);

    const std::string prefijo = "<" + std::to_string(GetParam().id) + ">";
    EXPECT_EQ(registro.longitud_prefijo, prefijo.size());
    for (std::uint32_t ranura = 0; ranura < num_ranuras_idioma; ++ranura) {
        const std::u16string texto = a_u16(registro.texto[ranura]);
        EXPECT_EQ(a_utf8(texto.substr(0, prefijo.size())), prefijo) << "slot " << ranura;
        ASSERT_GT(texto.size(), prefijo.size()) << "slot " << ranura;
        EXPECT_NE(texto[prefijo.size()], u'<') << "prefix twice, slot " << ranura;
        EXPECT_NE(texto[prefijo.size()], u' ') << "slot " << ranura;
        EXPECT_NE(texto.back(), u' ') << "slot " << ranura;
        EXPECT_FALSE(contiene(texto, u"  ")) << "slot " << ranura << ": " << a_utf8(texto);
    }
}

TEST_P(Mensaje, EspanolEIngles) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    EXPECT_EQ(a_utf8(sin_prefijo(registro, 0)), a_utf8(GetParam().espanol));
    EXPECT_EQ(a_utf8(sin_prefijo(registro, 8)), a_utf8(GetParam().ingles));
}

// ---- translations that a near wording would turn into something else

struct fila_de_sentido {
    ConstructorMensaje construye;
    ranura_idioma ranura;
    const wchar_t* texto;
    const char* que_no_dice;
};

const fila_de_sentido sentidos[] = {
    {i_msg_53961_no_se_puede_proteger_fichero, ranura_polaco,
     L"Nie można zabezpieczyć pliku '%s' przed zapisem", "secure before the file is written"},
    {i_msg_53962_no_se_puede_desproteger_fichero, ranura_polaco,
     L"Nie można usunąć zabezpieczenia pliku '%s' przed zapisem", "writing from the file"},
    {i_msg_53962_no_se_puede_desproteger_fichero, ranura_ruso,
     L"Не удается снять с файла '%s' защиту от записи", "a record from the file"},
    {i_msg_401224_fichero_en_uso_o_sin_permiso, ranura_portugues_portugal,
     L"É possível que o ficheiro esteja a ser utilizado por outra aplicação ou que o utilizador não tenha "
     L"permissão de escrita neste diretório.",
     "that the file has no permission"},
    {i_msg_401224_fichero_en_uso_o_sin_permiso, ranura_chino_simplificado,
     L"该文件可能正由其他应用程序使用，或者您可能没有此目录的写入权限。",
     "that the permission is surely missing"},
    {i_msg_158391_no_se_puede_abrir_para_cambiar_fecha, ranura_portugues_brasil,
     L"Não é possível abrir o arquivo '%s' para modificar a data dele.", "your date"},
    {i_msg_404523_fichero_sin_permiso_de_escritura, ranura_frances,
     L"Le fichier n'est pas accessible en écriture.", "that a file holds a permission"},
    {i_msg_404523_fichero_sin_permiso_de_escritura, ranura_italiano,
     L"Il file non è accessibile in scrittura.", "that a file holds a permission"},
    // What is wrong is the name, never what the file holds.
    {i_msg_53955_fichero_no_correcto, ranura_aleman, L"Der Dateiname '%s' ist nicht korrekt",
     "that the file is wrong"},
    {i_msg_53955_fichero_no_correcto, ranura_japones, L"ファイル名 '%s' が正しくありません",
     "that the file is wrong"},
};

TEST(CatalogoSentido, LasFrasesDicenLoQueQuierenDecir) {
    for (const fila_de_sentido& fila : sentidos) {
        EXPECT_EQ(a_utf8(sin_prefijo(registro_construido(fila.construye), fila.ranura)), a_utf8(fila.texto))
            << "it must not say: " << fila.que_no_dice;
    }
}

// The placeholders in their order, each with a blank behind it; "?" for a per cent sign that is none.
std::string marcadores(std::u16string_view texto) {
    std::string encontrados;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        if (texto[i] != u'%') {
            continue;
        }
        if (texto.substr(i, 2) == u"%s") {
            encontrados += "%s ";
        } else if (texto.substr(i, 3) == u"%ld") {
            encontrados += "%ld ";
        } else {
            encontrados += "? ";
        }
    }
    return encontrados;
}

TEST_P(Mensaje, MarcadoresIgualesEnTodosLosIdiomas) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    const std::string esperados = marcadores(a_u16(GetParam().espanol));
    EXPECT_EQ(esperados.find('?'), std::string::npos);
    for (std::uint32_t ranura = 0; ranura < num_ranuras_idioma; ++ranura) {
        EXPECT_EQ(marcadores(a_u16(registro.texto[ranura])), esperados)
            << "slot " << ranura << ": " << a_utf8(registro.texto[ranura]);
    }
}

TEST_P(Mensaje, ComillasYTerminosFijosIgualesEnTodosLosIdiomas) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    const std::u16string ingles = sin_prefijo(registro, 8);
    for (std::uint32_t ranura = 0; ranura < num_ranuras_idioma; ++ranura) {
        const std::u16string texto = sin_prefijo(registro, ranura);
        for (const char16_t* fijo : {u"'%s'", u"'TEMP'", u"Windows"}) {
            EXPECT_EQ(contiene(texto, fijo), contiene(ingles, fijo))
                << "slot " << ranura << ": " << a_utf8(texto);
        }
    }
}

TEST_P(Mensaje, PuntoFinalComoEnIngles) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    const bool con_punto = a_u16(GetParam().ingles).back() == u'.';
    for (std::uint32_t ranura = 0; ranura < num_ranuras_idioma; ++ranura) {
        const char16_t ultimo = a_u16(registro.texto[ranura]).back();
        const bool ideografica = ranura == 12 || ranura == 39;
        EXPECT_EQ(ultimo == (ideografica ? u'。' : u'.'), con_punto)
            << "slot " << ranura << ": " << a_utf8(registro.texto[ranura]);
        EXPECT_NE(ultimo, ideografica ? u'.' : u'。') << "slot " << ranura;
    }
}

TEST_P(Mensaje, RespaldoPorIdentidadDePuntero) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    const wchar_t* const espanol = registro.texto[0];
    const wchar_t* const ingles = registro.texto[8];
    EXPECT_NE(espanol, ingles);
    for (const fila_ranura& fila : ranuras) {
        const wchar_t* const texto = registro.texto[fila.ranura];
        switch (fila.sin_texto_propio) {
            case respaldo::espanol:
                EXPECT_EQ(texto, espanol) << "slot " << fila.ranura;
                break;
            case respaldo::ingles:
                EXPECT_EQ(texto, ingles) << "slot " << fila.ranura;
                break;
            case respaldo::regional:
                EXPECT_NE(texto, ingles) << "slot " << fila.ranura;
                break;
            case respaldo::ninguno:
                EXPECT_EQ(texto == espanol, fila.ranura == 0) << "slot " << fila.ranura;
                EXPECT_EQ(texto == ingles, fila.ranura == 8) << "slot " << fila.ranura;
                break;
        }
    }
}

TEST_P(Mensaje, LosDoceIdiomasTienenTextoPropio) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    std::set<const wchar_t*> punteros{registro.texto[0], registro.texto[8]};
    for (const std::uint32_t ranura : ranuras_traducidas) {
        EXPECT_TRUE(punteros.insert(registro.texto[ranura]).second) << "slot " << ranura;
        EXPECT_NE(a_utf8(registro.texto[ranura]), a_utf8(registro.texto[0])) << "slot " << ranura;
        EXPECT_NE(a_utf8(registro.texto[ranura]), a_utf8(registro.texto[8])) << "slot " << ranura;
    }
}

TEST_P(Mensaje, VariantesRegionalesDicenArchivo) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    std::u16string esperado = a_u16(registro.texto[0]);
    bool dice_fichero = false;
    for (std::size_t i; (i = esperado.find(u"fichero")) != std::u16string::npos; dice_fichero = true) {
        esperado.replace(i, 7, u"archivo");
    }

    for (const std::uint32_t ranura : {6u, 7u, 24u}) {
        const bool conserva = ranura == 7 && (GetParam().id == 53961 || GetParam().id == 53962);
        const wchar_t* const texto = registro.texto[ranura];
        if (!dice_fichero || conserva) {
            EXPECT_EQ(texto, registro.texto[0]) << "slot " << ranura;
        } else {
            EXPECT_EQ(a_utf8(texto), a_utf8(esperado)) << "slot " << ranura;
        }
        EXPECT_EQ(contiene(a_u16(texto), u"fichero"), conserva) << "slot " << ranura << ": " << a_utf8(texto);
    }
}

bool tiene_entre(std::u16string_view texto, char16_t primero, char16_t ultimo) {
    return std::any_of(texto.begin(), texto.end(),
                       [=](char16_t unidad) { return unidad >= primero && unidad <= ultimo; });
}

// Tells a text in the wrong slot, or one that went through the wrong code page, by its script.
TEST_P(Mensaje, EscrituraDeCadaIdioma) {
    const RegistroMensaje registro = registro_construido(GetParam().construye);
    for (std::uint32_t ranura = 0; ranura < num_ranuras_idioma; ++ranura) {
        const std::u16string texto = a_u16(registro.texto[ranura]);
        const bool kana = tiene_entre(texto, u'\u3041', u'\u30FF');
        const bool han = tiene_entre(texto, u'\u4E00', u'\u9FFF');
        const bool cirilico = tiene_entre(texto, u'\u0400', u'\u04FF');
        EXPECT_EQ(kana, ranura == 39) << "slot " << ranura << ": " << a_utf8(texto);
        EXPECT_EQ(han && !kana, ranura == 12) << "slot " << ranura << ": " << a_utf8(texto);
        EXPECT_EQ(cirilico, ranura == 18) << "slot " << ranura << ": " << a_utf8(texto);
        EXPECT_FALSE(tiene_entre(texto, u'\u0001', u'\u001F')) << "slot " << ranura;
        EXPECT_FALSE(tiene_entre(texto, u'\u0080', u'\u009F')) << "slot " << ranura;
        EXPECT_FALSE(tiene_entre(texto, u'\uE000', u'\uF8FF')) << "slot " << ranura;
        EXPECT_FALSE(tiene_entre(texto, u'\uFFF0', u'\uFFFF')) << "slot " << ranura;
        EXPECT_FALSE(contiene(texto, u"Ã")) << "slot " << ranura << ": " << a_utf8(texto);
    }
}

// ---- the catalogue as a whole

TEST(Catalogo, ListaLosMismosMensajesQueLaTabla) {
    ASSERT_EQ(num_mensajes_catalogo, 28u);
    ASSERT_EQ(std::size(filas), std::size(catalogo));
    for (std::size_t i = 0; i < std::size(filas); ++i) {
        EXPECT_STREQ(catalogo[i].nombre, filas[i].nombre);
        EXPECT_EQ(catalogo[i].id, filas[i].id) << filas[i].nombre;
        EXPECT_EQ(catalogo[i].construye, filas[i].construye) << filas[i].nombre;
        EXPECT_EQ(std::string(filas[i].nombre).rfind("i_msg_" + std::to_string(filas[i].id) + "_", 0), 0u)
            << filas[i].nombre;
    }
}

TEST(Catalogo, CadaMensajeTieneSuLugar) {
    std::set<std::pair<std::string, std::uint32_t>> lugares;
    std::set<ConstructorMensaje> constructores;
    for (const fila_catalogo& fila : catalogo) {
        const RegistroMensaje registro = registro_construido(fila.construye);
        EXPECT_TRUE(lugares.insert({registro.fichero_mensajes, registro.linea}).second) << fila.nombre;
        EXPECT_TRUE(constructores.insert(fila.construye).second) << fila.nombre;
    }
}

TEST(Catalogo, SoloDosNumerosSeRepiten) {
    std::vector<unsigned long> ids;
    for (const fila_catalogo& fila : catalogo) {
        ids.push_back(fila.id);
    }
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));

    std::vector<unsigned long> repetidos;
    for (std::size_t i = 1; i < ids.size(); ++i) {
        if (ids[i] == ids[i - 1]) {
            repetidos.push_back(ids[i]);
        }
    }
    EXPECT_EQ(repetidos, (std::vector<unsigned long>{53951, 74876}));
}

TEST(Catalogo, NumeroRepetido53951) {
    const RegistroMensaje borrar = registro_construido(i_msg_53951_no_se_puede_borrar_fichero);
    const RegistroMensaje renombrar = registro_construido(i_msg_53951_no_se_puede_renombrar);
    EXPECT_STREQ(borrar.fichero_mensajes, renombrar.fichero_mensajes);
    EXPECT_NE(borrar.linea, renombrar.linea);
    EXPECT_EQ(a_utf8(borrar.texto[8]), "<53951>Cannot delete the file '%s'");
    EXPECT_EQ(a_utf8(renombrar.texto[8]), "<53951>The file cannot be renamed");
}

TEST(Catalogo, NumeroRepetido74876SoloDifiereEnLasComillas) {
    const RegistroMensaje con = registro_construido(i_msg_74876_no_existe_fichero);
    const RegistroMensaje sin = registro_construido(i_msg_74876_no_existe_fichero_sin_comillas);
    EXPECT_STREQ(con.fichero_mensajes, "lumodir.msg");
    EXPECT_STREQ(sin.fichero_mensajes, "ficheros.msg");
    for (std::uint32_t ranura = 0; ranura < num_ranuras_idioma; ++ranura) {
        std::u16string esperado = a_u16(con.texto[ranura]);
        const std::size_t posicion = esperado.find(u"'%s'");
        ASSERT_NE(posicion, std::u16string::npos) << "slot " << ranura;
        esperado.replace(posicion, 4, u"%s");
        EXPECT_EQ(a_utf8(sin.texto[ranura]), a_utf8(esperado)) << "slot " << ranura;
    }
}

// One known sentence per language: a slot taken for its neighbour shows here.
TEST(Catalogo, CadaRanuraHablaSuIdioma) {
    const RegistroMensaje registro = registro_construido(i_msg_31827_no_existe_directorio);
    ASSERT_EQ(std::size(ranuras), std::size(registro.texto));
    for (std::uint32_t i = 0; i < std::size(ranuras); ++i) {
        ASSERT_EQ(ranuras[i].ranura, i);
        const wchar_t* esperado = ranuras[i].anuncio_31827;
        if (esperado == nullptr) {
            esperado = ranuras[ranuras[i].sin_texto_propio == respaldo::ingles ? 8 : 0].anuncio_31827;
        }
        EXPECT_EQ(a_utf8(sin_prefijo(registro, i)), a_utf8(esperado)) << "slot " << i;
    }
}

// The two Portuguese variants stand side by side and differ in this word throughout.
TEST(Catalogo, ArquivoEnBrasilFicheiroEnPortugal) {
    for (const fila_catalogo& fila : catalogo) {
        const RegistroMensaje registro = registro_construido(fila.construye);
        const std::u16string brasil = a_u16(registro.texto[ranura_portugues_brasil]);
        const std::u16string portugal = a_u16(registro.texto[ranura_portugues_portugal]);
        EXPECT_FALSE(contiene(brasil, u"icheiro")) << a_utf8(brasil);
        EXPECT_FALSE(contiene(portugal, u"rquivo")) << a_utf8(portugal);
        EXPECT_EQ(contiene(brasil, u"rquivo"), contiene(portugal, u"icheiro")) << fila.nombre;
    }
}

TEST(RanurasIdioma, NombresYRespaldos) {
    struct fila_nombre {
        std::uint32_t nombrada;
        std::uint32_t ranura;
    };
    const fila_nombre nombres[] = {
        {ranura_espanol, 0},
        {ranura_frances, 1},
        {ranura_portugues_brasil, 2},
        {ranura_portugues_portugal, 3},
        {ranura_catalan, 4},
        {ranura_italiano, 5},
        {ranura_espanol_regional_1, 6},
        {ranura_espanol_regional_2, 7},
        {ranura_ingles, 8},
        {ranura_gallego, 9},
        {ranura_bulgaro, 10},
        {ranura_rumano, 11},
        {ranura_chino_simplificado, 12},
        {ranura_aleman, 13},
        {ranura_ruso, 18},
        {ranura_espanol_regional_3, 24},
        {ranura_tailandes, 25},
        {ranura_checo, 26},
        {ranura_croata, 27},
        {ranura_esloveno, 29},
        {ranura_hungaro, 30},
        {ranura_polaco, 31},
        {ranura_turco, 33},
        {ranura_japones, 39},
    };
    for (const fila_nombre& fila : nombres) {
        EXPECT_EQ(fila.nombrada, fila.ranura);
    }

    for (const fila_ranura& fila : ranuras) {
        if (fila.sin_texto_propio == respaldo::ninguno) {
            continue;
        }
        const std::uint32_t esperada = fila.sin_texto_propio == respaldo::ingles ? 8 : 0;
        EXPECT_EQ(ranura_de_respaldo(fila.ranura), esperada) << "slot " << fila.ranura;
    }
}

}  // namespace
