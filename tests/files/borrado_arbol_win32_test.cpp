// Deleting contents and trees: strictly, stopping, in passes; links, depth, other processes, faults.
#include "apoyo/borrados_vistos.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/enlace.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/formas_de_borrar.hpp"
#include "apoyo/hijo.hpp"
#include "apoyo/niveles.hpp"
#include "apoyo/otro_proceso.hpp"
#include "apoyo/volumen_falso.hpp"
#include "cdir.h"
#include "companions/arr.h"
#include "companions/buclrein.h"
#include "companions/sistema.hpp"
#include "files/recorrido_borrado.hpp"
#include "lumodir.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

// The 8-bit twin of another.
bool es_gemela(const forma_de_borrar& f) {
    const std::string_view n = f.nombre;
    return n.ends_with("subdirectorios") || n.ends_with("o_directorio");
}

void siembra_arbol(const directorio_temporal& d) {
    d.fichero("t\\a.txt");
    d.fichero("t\\b.txt", "x", FILE_ATTRIBUTE_READONLY);
    d.fichero("t\\sub\\\u00f1.txt");
    d.fichero("t\\sub\\hondo\\oculto.txt", "x", FILE_ATTRIBUTE_HIDDEN);
    d.directorio("t\\vacio");
    d.fichero("fuera.txt");
}

}  // namespace

TEST(borrado_arbol, borra_lo_que_hay_y_nada_de_fuera) {
    for (const forma_de_borrar& f : formas_de_borrar) {
        const directorio_temporal d;
        siembra_arbol(d);
        const unsigned short respuesta = f.borra(d.ruta("t"));
        EXPECT_EQ(respuesta, f.da_respuesta() ? 1 : no_contesta) << f.nombre;
        lista queda{"fuera.txt"};
        if (!f.recursiva) {
            queda = {
                "fuera.txt",          "t\\",       "t\\sub\\", "t\\sub\\hondo\\", "t\\sub\\hondo\\oculto.txt",
                "t\\sub\\\u00f1.txt", "t\\vacio\\"};
        } else if (!f.quita_raiz) {
            queda = {"fuera.txt", "t\\"};
        }
        EXPECT_EQ(d.arbol(), queda) << f.nombre;
        EXPECT_EQ(toma_esperas().size(), 0u) << f.nombre;
    }
}

// Where links are followed, whoever may change the marks of a file must be able to write it: nobody but an administrator
// where it is read-only.
TEST(borrado_arbol, lo_de_solo_lectura_se_va_tambien_sin_ser_administrador) {
    if (!interno::sistema.sigue_enlaces()) {
        GTEST_SKIP() << "the right to change marks is one of its own here";
    }
    static decltype(interno::sistema.abre_entrada) abre_antes;
    static decltype(interno::sistema.CreateFileW) crea_antes;
    abre_antes = interno::sistema.abre_entrada;
    crea_antes = interno::sistema.CreateFileW;
    static constexpr auto se_niega = [](DWORD acceso) {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return (acceso & FILE_WRITE_ATTRIBUTES) != 0;
    };
    const sustituye entradas(interno::sistema.abre_entrada,
                             [](const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD compartir,
                                DWORD opciones, DWORD atributos) -> HANDLE {
                                 return se_niega(acceso) ? INVALID_HANDLE_VALUE
                                                         : abre_antes(nombre, directorio, acceso, compartir,
                                                                      opciones, atributos);
                             });
    const sustituye raices(interno::sistema.CreateFileW,
                           [](LPCWSTR ruta, DWORD acceso, DWORD compartir, LPSECURITY_ATTRIBUTES seguridad,
                              DWORD disposicion, DWORD indicadores, HANDLE plantilla) WINAPI -> HANDLE {
                               return se_niega(acceso) ? INVALID_HANDLE_VALUE
                                                       : crea_antes(ruta, acceso, compartir, seguridad,
                                                                    disposicion, indicadores, plantilla);
                           });
    for (const forma_de_borrar& f : formas_de_borrar) {
        const directorio_temporal d;
        d.fichero("t\\a.txt", "x", FILE_ATTRIBUTE_READONLY);
        d.fichero("t\\sub\\\u00f1.txt", "x", FILE_ATTRIBUTE_READONLY);
        ::SetFileAttributesW(d.ruta_w("t").c_str(), FILE_ATTRIBUTE_READONLY);
        f.borra(d.ruta("t"));
        EXPECT_FALSE(d.existe("t\\a.txt")) << f.nombre;
        EXPECT_EQ(d.existe("t\\sub\\\u00f1.txt"), !f.recursiva) << f.nombre;
        EXPECT_EQ(d.existe("t"), !f.recursiva || !f.quita_raiz) << f.nombre;
        EXPECT_EQ(toma_esperas().size(), 0u) << f.nombre;
    }
}

TEST(borrado_arbol, los_directorios_que_empiezan_por_punto_detienen_el_borrado_estricto) {
    buclrein_establece_politica(0, 0);
    for (const forma_de_borrar& f : formas_de_borrar) {
        const directorio_temporal d;
        d.fichero("t\\sub\\.svn\\entries");
        d.fichero("t\\sub\\f.txt");
        const unsigned short respuesta = f.borra(d.ruta("t"));
        if (!f.recursiva) {
            EXPECT_TRUE(d.existe("t\\sub\\f.txt")) << f.nombre;
            continue;
        }
        EXPECT_FALSE(d.existe("t\\sub\\f.txt")) << f.nombre;
        EXPECT_EQ(d.existe("t\\sub\\.svn\\entries"), !f.con_puntos) << f.nombre;
        if (f.da_respuesta()) {
            EXPECT_EQ(respuesta, f.con_puntos ? 1 : 0) << f.nombre;
        }
        lista preguntas;
        for (const pregunta& p : toma_preguntas()) {
            preguntas.push_back(p.mensaje.substr(0, p.mensaje.find('\n')));
        }
        lista esperadas;
        if (!f.con_puntos) {
            esperadas.push_back("Unable to delete the directory '" + d.ruta("t\\sub") + "'");
            if (f.quita_raiz) {
                esperadas.push_back("Unable to delete the directory '" + d.ruta("t") + "'");
            }
        }
        EXPECT_EQ(preguntas, esperadas) << f.nombre;
    }
}

TEST(borrado_arbol, un_directorio_nulo_vacio_o_en_blanco_no_borra_nada) {
    const directorio_temporal d;
    d.fichero("a.txt");
    const en_directorio ahi(d.ruta_w());
    fallos libro;
    for (const forma_de_borrar& f : formas_de_borrar) {
        for (const char* blanco : {"", " ", "   "}) {
            EXPECT_EQ(f.borra(blanco), f.da_respuesta() ? 0 : no_contesta) << f.nombre;
            EXPECT_EQ(toma_expresiones(), lista{"widestr_longitud(directorio) > 0"}) << f.nombre;
        }
        EXPECT_EQ(f.borra("(NULL)"), f.da_respuesta() ? 0 : no_contesta) << f.nombre;
        EXPECT_EQ(toma_expresiones(), lista{"(directorio) != NULL"}) << f.nombre;
    }
    EXPECT_EQ(libro.llamadas(), 0u) << "nothing was even looked at";
    EXPECT_TRUE(d.existe("a.txt"));
}

TEST(borrado_arbol, un_directorio_que_falta) {
    const directorio_temporal d;
    const std::string ruta = d.ruta("falta");
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_UNICODE(w(ruta).c_str()), 0);
    ESPERA_AVISOS("Cannot delete the directory '" + ruta + "' (it does not exist)");
    ESPERA_INFORMES("CR_existe");
    cdir_borra_contenido_directorio_UNICODE(w(ruta).c_str());
    cdir_borra_directorio_y_subdirectorios_reintentando_u(w(ruta).c_str());
    EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(w(ruta).c_str()), 1)
        << "no file is left";
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(w(ruta).c_str(), nullptr), 0);
}

TEST(borrado_arbol, un_fichero_en_lugar_de_directorio_se_queda) {
    buclrein_establece_politica(0, 0);
    for (const forma_de_borrar& f : formas_de_borrar) {
        const directorio_temporal d;
        d.fichero("f.txt");
        const unsigned short respuesta = f.borra(d.ruta("f.txt"));
        EXPECT_TRUE(d.existe("f.txt")) << f.nombre;
        EXPECT_EQ(respuesta, f.da_respuesta() ? 0 : no_contesta)
            << f.nombre << ": it is there and was not looked into";
        EXPECT_EQ(toma_expresiones(), f.debe ? lista{no_se_han_borrado_todos} : lista{}) << f.nombre;
        toma_preguntas();
    }
}

TEST(borrado_arbol, de_un_fichero_en_lugar_de_directorio_se_dice_el_codigo_del_sistema) {
    buclrein_establece_politica(0, 0);
    const directorio_temporal d;
    const std::string ruta = d.fichero("\u00f1.txt", "intacto");
    ::SetLastError(0);
    ASSERT_FALSE(::RemoveDirectoryW(w(ruta).c_str()));
    const DWORD codigo = ::GetLastError();
    for (const forma_de_borrar& f : formas_de_borrar) {
        f.borra(ruta);
        const std::vector<pregunta> preguntas = toma_preguntas();
        toma_informes();
        if (!preguntas.empty()) {
            EXPECT_EQ(preguntas[0].codigo, codigo) << f.nombre;
            EXPECT_EQ(preguntas[0].mensaje.substr(0, preguntas[0].mensaje.find('\n')),
                      "Unable to delete the directory '" + ruta + "'")
                << f.nombre;
        }
        EXPECT_LE(preguntas.size(), 1u) << f.nombre;
        EXPECT_EQ(d.contenido("\u00f1.txt"), "intacto") << f.nombre;
        toma_esperas();
    }
    unsigned short sigue = 1;
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_parando(w(ruta).c_str(), &sigue), 0);
    EXPECT_EQ(toma_preguntas().size(), 1u) << "the strict ones ask";
}

TEST(borrado_arbol, un_fichero_que_se_va_entretanto_se_informa_con_su_sitio) {
    const directorio_temporal d;
    // Somebody else is quicker with the file.
    static const directorio_temporal* sitio;
    static decltype(interno::sistema.abre_entrada) antes;
    sitio = &d;
    antes = interno::sistema.abre_entrada;
    const sustituye mas_rapido(
        interno::sistema.abre_entrada,
        [](const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD compartir, DWORD opciones,
           DWORD atributos) -> HANDLE {
            // By its name alone, or by its path where links are followed.
            if ((acceso & DELETE) != 0 && interno::acaba_en(interno::vista_w(nombre), L"a.txt")) {
                sitio->borra("t\\sub\\a.txt");
            }
            return antes(nombre, directorio, acceso, compartir, opciones, atributos);
        });
    for (const char* final : {"", "\\"}) {
        d.fichero("t\\sub\\a.txt");
        const std::string raiz = d.ruta("t") + final;
        EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_UNICODE(w(raiz).c_str()), 1);
        const std::string ruta = d.ruta("t\\sub\\a.txt");
        ESPERA_AVISOS("Cannot delete the file '" + ruta + "' (it does not exist)");
        const informe dado = toma_el_informe();
        EXPECT_EQ(dado.expresion, "CR_existe");
        EXPECT_EQ(dado.detalle, ruta + "\n" + raiz + "\\sub\\a.txt");
        d.directorio("t");
    }
}

TEST(borrado_arbol, la_bandera_detiene_entre_entradas) {
    const directorio_temporal d;
    siembra_arbol(d);
    unsigned short sigue = 0;
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_parando(d.ruta_w("t").c_str(), &sigue), 0);
    EXPECT_TRUE(d.existe("t\\a.txt")) << "stopped before the first entry";
    EXPECT_TRUE(d.existe("t\\vacio"));

    int quedan = -1;
    borrados_vistos vistos;
    vistos.al_borrar = [&](const std::string&, bool es_directorio) {
        if (!es_directorio && --quedan == 0) {
            sigue = 0;
        }
    };
    for (int n = 1; n <= 6; ++n) {
        const directorio_temporal otro;
        for (const char* fichero : {"t\\a", "t\\b", "t\\s\\c", "t\\s\\c2", "t\\s\\u\\d", "t\\v\\e"}) {
            otro.fichero(fichero);
        }
        sigue = 1;
        quedan = n;
        EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_parando(otro.ruta_w("t").c_str(), &sigue), 0) << n;
        std::size_t ficheros = 0;
        for (const std::string& e : otro.arbol()) {
            ficheros += e.back() != '\\' ? 1 : 0;
        }
        EXPECT_EQ(ficheros, 6u - static_cast<unsigned>(n));
        EXPECT_TRUE(otro.existe("t")) << n;
        quedan = -1;
    }
    // Once all is gone nothing is left to be stopped.
    const directorio_temporal entero;
    entero.fichero("t\\a");
    sigue = 1;
    vistos.al_borrar = [&](const std::string& ruta, bool) { sigue = ruta == entero.ruta("t") ? 0 : 1; };
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_parando(entero.ruta_w("t").c_str(), &sigue), 1);
    EXPECT_EQ(sigue, 0);
}

TEST(borrado_arbol, otra_bandera_que_uno_deja_los_directorios) {
    const directorio_temporal d;
    siembra_arbol(d);
    unsigned short sigue = 2;
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_parando(d.ruta_w("t").c_str(), &sigue), 2);
    EXPECT_EQ(d.arbol(), (lista{"fuera.txt", "t\\", "t\\sub\\", "t\\sub\\hondo\\", "t\\vacio\\"}));
}

TEST(borrado_arbol, sin_bandera_no_se_borra_nada) {
    const directorio_temporal d;
    siembra_arbol(d);
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_parando(d.ruta_w("t").c_str(), nullptr), 0);
    ESPERA_INFORMES("cotinuar != NULL");
    EXPECT_TRUE(d.existe("t\\a.txt"));
}

TEST(borrado_arbol, un_enlace_unix_no_se_sigue) {
    // Windows opens a link itself and takes it away; Wine would come to what it points to, and there it stays.
    const bool se_van = !interno::sistema.sigue_enlaces();
    for (const forma_de_borrar& f : formas_de_borrar) {
        const directorio_temporal d;
        d.fichero("valioso\\no tocar.txt");
        d.fichero("t\\f.txt");
        enlace suyo(d.ruta("t"), "enlace", "..\\valioso");
        if (!suyo.hecho()) {
            GTEST_SKIP() << suyo.motivo();
        }
        ASSERT_EQ(d.atributos("t\\enlace") & (FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY),
                  DWORD{FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY});
        buclrein_establece_politica(0, 0);
        f.borra(d.ruta("t"));
        EXPECT_TRUE(d.existe("valioso\\no tocar.txt")) << f.nombre;
        EXPECT_FALSE(d.existe("t\\f.txt")) << f.nombre;
        EXPECT_EQ(suyo.hecho(), !(se_van && f.recursiva)) << f.nombre;
        // As the root itself it is not entered either, however it is written.
        for (const char* raiz : {"t\\enlace\\", "t\\enlace/", "t\\enlace\\\\", "t\\enlace\\.", "t\\enlace"}) {
            d.directorio("t");
            ASSERT_TRUE(suyo.hazlo());
            f.borra(d.ruta(raiz));
            EXPECT_TRUE(d.existe("valioso\\no tocar.txt")) << f.nombre << " " << raiz;
            EXPECT_EQ(suyo.hecho(), !(se_van && f.quita_raiz)) << f.nombre << " " << raiz;
        }
        toma_preguntas();
        toma_esperas();
        // A link that stays is a directory that is there and was not looked into.
        const lista expresiones = toma_expresiones();
        const unsigned sin_mirar = !f.recursiva ? 5 : se_van ? 0 : 6;
        EXPECT_EQ(expresiones, lista(f.debe ? sin_mirar : 0, no_se_han_borrado_todos)) << f.nombre;
    }
}

// Windows cuts blanks and points where a path ends, and leaves them where it goes on: what would be looked at is not
// what would be walked.
TEST(borrado_arbol, un_nombre_que_Windows_recorta_no_se_recorre) {
    for (const char* raiz : {"t ", "t..", "t  \\", "u\\...", "u\\.. "}) {
        const directorio_temporal d;
        d.fichero("t\\f.txt");
        const std::string recortable =
            std::string(raiz).substr(0, std::string(raiz).find_last_not_of('\\') + 1);
        d.fichero(recortable + "\\f.txt");
        const lista antes = d.arbol();
        buclrein_establece_politica(0, 0);
        for (const forma_de_borrar& f : formas_de_borrar) {
            fallos libro;
            EXPECT_NE(f.borra(d.ruta(raiz)), 1) << f.nombre << " '" << raiz << "'";
            EXPECT_EQ(libro.cuenta("abre_entrada"), 0u) << f.nombre << " '" << raiz << "'";
            EXPECT_EQ(libro.cuenta("SetFileInformationByHandle"), 0u) << f.nombre << " '" << raiz << "'";
            EXPECT_EQ(d.arbol(), antes) << f.nombre << " '" << raiz << "'";
        }
        toma_preguntas();
        toma_avisos();
        toma_informes();
    }
    // Nor is it called gone while the system does not say whether it is there.
    const directorio_temporal d;
    d.directorio("t");
    {
        fallos f;
        f.falla_siempre("GetFileAttributesW", ERROR_DISK_FULL);
        EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(d.ruta_w("t.").c_str()), 0);
    }
    toma_informes();
    // With the prefix nothing is cut.
    d.fichero("t \\f.txt");
    cdir_borra_contenido_directorio_UNICODE(w("\\\\?\\" + d.ruta("t ")).c_str());
    EXPECT_FALSE(d.existe("t \\f.txt"));
}

// Without its separator the name of a volume is that of a device, no directory.
TEST(borrado_arbol, la_raiz_de_un_volumen_conserva_su_separador) {
    buclrein_establece_politica(0, 0);
    for (const char* prefijo : {"\\\\?\\", "\\\\.\\"}) {
        const std::string volumen = std::string(prefijo) + "Volume{00000000-0000-0000-0000-00000000dead}";
        for (const forma_de_borrar& f : formas_de_borrar) {
            fallos libro;
            f.borra(volumen + "\\");
            EXPECT_GT(libro.llamadas(), 0u) << f.nombre;
            for (const fallos::llamada& l : libro.historia()) {
                EXPECT_NE(l.ruta, volumen) << f.nombre << ": " << l.nombre;
            }
            toma_avisos();
            toma_informes();
        }
    }
}

// Not every file system knows the question for the reparse tag: where the directory is no reparse point there is no
// tag to ask for.
TEST(borrado_arbol, sin_respuesta_sobre_la_marca_deciden_los_atributos) {
    static DWORD bits;
    buclrein_establece_politica(0, 0);
    for (const forma_de_borrar& f : formas_de_borrar) {
        if (!f.recursiva) {
            continue;
        }
        const directorio_temporal d;
        siembra_arbol(d);
        fallos libro;
        libro.falla_siempre("GetFileInformationByHandleEx", ERROR_INVALID_PARAMETER);
        f.borra(d.ruta("t"));
        EXPECT_FALSE(d.existe("t\\sub")) << f.nombre;
        EXPECT_EQ(libro.manijas_abiertas(), 0u);

        d.fichero("t\\sub\\f.txt");
        static decltype(interno::sistema.GetFileInformationByHandle) antes;
        antes = interno::sistema.GetFileInformationByHandle;
        for (const DWORD atributos :
             {DWORD{FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY}, DWORD{FILE_ATTRIBUTE_NORMAL}}) {
            bits = atributos;
            const sustituye otro(interno::sistema.GetFileInformationByHandle,
                                 [](HANDLE h, LPBY_HANDLE_FILE_INFORMATION datos) -> BOOL {
                                     const BOOL bien = antes(h, datos);
                                     datos->dwFileAttributes = bits;
                                     return bien;
                                 });
            f.borra(d.ruta("t"));
            EXPECT_TRUE(d.existe("t\\sub\\f.txt")) << f.nombre << " attributes " << atributos;
            EXPECT_EQ(toma_expresiones(), f.debe ? lista{no_se_han_borrado_todos} : lista{}) << f.nombre;
        }
        toma_preguntas();
    }
}

TEST(borrado_arbol, basta_que_la_entrada_o_el_directorio_abierto_diga_que_es_un_enlace) {
    struct fila {
        DWORD atributos;
        DWORD marca;
        bool se_entra;
    };
    const fila filas[] = {
        {.atributos = FILE_ATTRIBUTE_REPARSE_POINT, .marca = IO_REPARSE_TAG_SYMLINK, .se_entra = false},
        {.atributos = FILE_ATTRIBUTE_REPARSE_POINT, .marca = IO_REPARSE_TAG_MOUNT_POINT, .se_entra = false},
        {.atributos = FILE_ATTRIBUTE_REPARSE_POINT, .marca = 0, .se_entra = false},
        {.atributos = FILE_ATTRIBUTE_REPARSE_POINT, .marca = 0x9000001A, .se_entra = true},  // cloud storage
        {.atributos = 0,
         .marca = IO_REPARSE_TAG_SYMLINK,
         .se_entra = true},  // the tag means nothing without the bit
    };
    buclrein_establece_politica(0, 0);
    for (const fila& caso : filas) {
        for (const bool por_entrada : {true, false}) {
            for (const forma_de_borrar& f : formas_de_borrar) {
                if (!f.recursiva) {
                    continue;
                }
                volumen_falso v;
                v.pon("C:\\d\\t\\sub", {{"f.txt"}});
                nodo_falso& sub = v["C:\\d\\t\\sub"];
                (por_entrada ? sub.atributos : sub.atributos_abierto.emplace(sub.atributos)) |=
                    caso.atributos;
                (por_entrada ? sub.etiqueta : sub.etiqueta_abierta.emplace(0)) = caso.marca;
                if (por_entrada) {
                    sub.atributos_abierto = FILE_ATTRIBUTE_DIRECTORY;
                }
                f.borra("C:\\d\\t");
                EXPECT_EQ(v.hay("C:\\d\\t\\sub\\f.txt"), !caso.se_entra)
                    << f.nombre << " tag " << caso.marca
                    << (por_entrada ? " in the entry" : " of the directory");
                toma_preguntas();
                toma_esperas();
                toma_informes();
            }
        }
    }
}

TEST(borrado_arbol, lo_que_no_se_puede_abrir_para_mirarlo_no_se_recorre) {
    const directorio_temporal d;
    d.fichero("t\\f.txt");
    buclrein_establece_politica(0, 0);
    for (const char* llamada : {"CreateFileW", "GetFileInformationByHandle"}) {
        for (const forma_de_borrar& f : formas_de_borrar) {
            fallos libro;
            libro.falla_siempre(llamada, ERROR_ACCESS_DENIED);
            const sustituye sin_marca(
                interno::sistema.GetFileInformationByHandleEx,
                [](HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID, DWORD) -> BOOL { return FALSE; });
            EXPECT_NE(f.borra(d.ruta("t")), 1) << f.nombre;
            EXPECT_TRUE(d.existe("t\\f.txt")) << f.nombre;
            EXPECT_EQ(libro.cuenta("abre_entrada"), 0u) << f.nombre;
            EXPECT_EQ(libro.manijas_abiertas(), 0u) << f.nombre;
            EXPECT_EQ(toma_expresiones(), f.debe ? lista{no_se_han_borrado_todos} : lista{}) << f.nombre;
        }
    }
    toma_avisos();
    toma_preguntas();
    toma_esperas();
}

TEST(borrado_arbol, cada_directorio_se_lee_una_vez_y_cada_fichero_cuesta_una_llamada) {
    const directorio_temporal d;
    static unsigned lecturas;
    static decltype(interno::sistema.GetFileInformationByHandleEx) antes;
    for (const bool estricto : {true, false}) {
        for (int i = 0; i < 20; ++i) {
            d.fichero("t\\" + std::to_string(i % 4) + "\\f" + std::to_string(i));
        }
        lecturas = 0;
        antes = interno::sistema.GetFileInformationByHandleEx;
        const sustituye cuenta_lecturas(
            interno::sistema.GetFileInformationByHandleEx,
            [](HANDLE h, FILE_INFO_BY_HANDLE_CLASS clase, LPVOID datos, DWORD bytes) -> BOOL {
                lecturas += clase == FileIdBothDirectoryRestartInfo ? 1 : 0;
                return antes(h, clase, datos, bytes);
            });
        borrados_vistos vistos;
        fallos libro;
        if (estricto) {
            cdir_borra_contenido_directorio_UNICODE(d.ruta_w("t").c_str());
        } else {
            cdir_borra_directorio_y_subdirectorios_reintentando_u(d.ruta_w("t").c_str());
        }
        EXPECT_EQ(lecturas, 5u);
        EXPECT_EQ(vistos.rutas.size(), estricto ? 24u : 25u) << "one attempt each";
        EXPECT_EQ(libro.cuenta("abre_entrada"), 4u + 24u) << "directories to be read, entries to be deleted";
        for (const char* por_ruta :
             {"GetFileAttributesW", "SetFileAttributesW", "DeleteFileW", "RemoveDirectoryW"}) {
            EXPECT_EQ(libro.cuenta(por_ruta), 0u) << por_ruta;
        }
    }
    EXPECT_EQ(d.arbol(), lista{});
}

namespace {

struct borrado_en_hilo {
    const wchar_t* ruta;
    unsigned short respuesta;
};
DWORD WINAPI borra_en_hilo(void* dato) {
    auto* encargo = static_cast<borrado_en_hilo*>(dato);
    encargo->respuesta = cdir_borra_directorio_y_subdirectorios_UNICODE(encargo->ruta);
    return 0;
}

}  // namespace

TEST(borrado_arbol, quinientos_niveles_no_gastan_pila) {
    const directorio_temporal d;
    const texto_w ruta = w(d.directorio("t"));
    // Of more than 3,000 units in all; the Unix side of Wine ends at 4,096 bytes.
    ASSERT_TRUE(crea_niveles(ruta.c_str(), 500, L"nivel", L"f.txt"));
    borrado_en_hilo encargo = {ruta.c_str(), 9};
    constexpr SIZE_T pila_bytes = 128 * 1024;
    const HANDLE hilo = ::CreateThread(nullptr, pila_bytes, borra_en_hilo, &encargo,
                                       STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    ASSERT_NE(hilo, nullptr);
    ::WaitForSingleObject(hilo, INFINITE);
    ::CloseHandle(hilo);
    EXPECT_EQ(encargo.respuesta, 1);
    EXPECT_EQ(d.arbol(), lista{});
}

TEST(borrado_arbol, las_pasadas_esperan_entre_20_y_500_ms_20_veces) {
    const directorio_temporal d;
    const std::string ruta = d.fichero("t\\sub\\abierto.txt");
    d.fichero("t\\libre.txt");
    otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
    static unsigned siguiente;
    siguiente = 0;
    const sustituye azar(interno::sistema.numero_al_azar, []() noexcept -> unsigned { return siguiente++; });
    cdir_borra_directorio_y_subdirectorios_reintentando_u(d.ruta_w("t").c_str());
    ESPERA_INFORMES("se_han_borrado_todos_los_ficheros_loc == CIERTO");
    const std::vector<unsigned long> tabla = {50, 75, 100, 150, 200, 300, 400, 500};
    std::vector<unsigned long> esperadas;
    for (std::size_t i = 0; i < 20; ++i) {
        esperadas.push_back(tabla[i % 8]);
    }
    EXPECT_EQ(toma_esperas(), esperadas) << "a pause follows the last pass too";
    EXPECT_EQ(d.arbol(), (lista{"t\\", "t\\sub\\", "t\\sub\\abierto.txt"}));

    EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(d.ruta_w("t").c_str()), 0)
        << "no report, but the answer";
    EXPECT_EQ(toma_esperas().size(), 20u);
    lumodir_establece_modo_servicio_sin_reintentos();
    cdir_borra_contenido_directorio_reintentando_u(d.ruta_w("t\\sub").c_str());
    ESPERA_INFORMES("se_han_borrado_todos_los_ficheros_loc == CIERTO");
    EXPECT_EQ(toma_esperas().size(), 20u) << "service mode leaves the passes as they are";
    otro.suelta();
}

TEST(borrado_arbol, las_pasadas_acaban_cuando_el_fichero_se_suelta) {
    const directorio_temporal d;
    const std::string ruta = d.fichero("t\\sub\\abierto.txt");
    otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    unsigned pausas = 0;
    al_dormir([&](unsigned long) {
        if (++pausas == 4) {
            otro.suelta();
        }
    });
    cdir_borra_directorio_y_subdirectorios_reintentando_u(d.ruta_w("t").c_str());
    EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(4, 50));
    EXPECT_EQ(d.arbol(), lista{});
}

TEST(borrado_arbol, el_azar_de_las_pausas_llega_a_las_ocho) {
    unsigned vistas = 0;
    for (int i = 0; i < 2'000 && vistas != 0xFF; ++i) {
        vistas |= 1u << interno::sistema.numero_al_azar() % 8;
    }
    EXPECT_EQ(vistas, 0xFFu);
}

TEST(borrado_arbol, si_es_posible_contesta_por_los_ficheros_aunque_el_directorio_quede) {
    struct fila {
        DWORD codigo;
        std::size_t pausas;
    };
    const fila filas[] = {
        {.codigo = ERROR_DIR_NOT_EMPTY, .pausas = 20},  // something in it is not gone yet
        {.codigo = ERROR_ACCESS_DENIED, .pausas = 20},  {.codigo = ERROR_SHARING_VIOLATION, .pausas = 20},
        {.codigo = ERROR_DELETE_PENDING, .pausas = 20}, {.codigo = ERROR_WRITE_PROTECT, .pausas = 0},
        {.codigo = ERROR_FILE_NOT_FOUND, .pausas = 0},
    };
    for (const fila& caso : filas) {
        const directorio_temporal d;
        siembra_arbol(d);
        borrados_vistos vistos;
        vistos.falla = [&](const std::string&, bool es_directorio) {
            return es_directorio ? caso.codigo : 0;
        };
        EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(d.ruta_w("t").c_str()), 1)
            << caso.codigo;
        EXPECT_EQ(d.arbol(), (lista{"fuera.txt", "t\\", "t\\sub\\", "t\\sub\\hondo\\", "t\\vacio\\"}));
        EXPECT_EQ(toma_esperas().size(), caso.pausas) << caso.codigo;
        cdir_borra_directorio_y_subdirectorios_reintentando_u(d.ruta_w("t").c_str());
        ESPERA_INFORMES();
        EXPECT_EQ(toma_esperas().size(), caso.pausas) << caso.codigo;
    }
}

TEST(borrado_arbol, un_directorio_que_se_vacia_tarde_se_quita_en_otra_pasada) {
    const directorio_temporal d;
    siembra_arbol(d);
    int veces = 3;
    borrados_vistos vistos;
    vistos.falla = [&](const std::string& ruta, bool) {
        return ruta.ends_with("\\hondo") && veces-- > 0 ? DWORD{ERROR_DIR_NOT_EMPTY} : 0;
    };
    cdir_borra_directorio_y_subdirectorios_reintentando_u(d.ruta_w("t").c_str());
    EXPECT_EQ(d.arbol(), lista{"fuera.txt"});
    EXPECT_EQ(toma_esperas().size(), 3u);
}

// A link that stays keeps full the directories above it, and no others.
TEST(borrado_arbol, lo_que_se_queda_en_un_sitio_no_quita_la_pasada_de_otro) {
    for (const char* tarde : {"C:\\t\\z", "C:\\t\\a\\z", "C:\\t\\a\\a", "C:\\t\\0\\1\\2"}) {
        SCOPED_TRACE(tarde);
        volumen_falso v;
        v.pon("C:\\t\\a",
              {{"ld", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT, IO_REPARSE_TAG_SYMLINK}});
        v.pon(tarde, {});
        v["C:\\t\\a\\ld"].codigo_al_borrar = ERROR_CANT_ACCESS_FILE;
        v[tarde].codigo_al_borrar = ERROR_DIR_NOT_EMPTY;
        unsigned pausas = 0;
        al_dormir([&](unsigned long) {
            if (++pausas == 3) {
                v[tarde].codigo_al_borrar = ERROR_SUCCESS;
            }
        });
        EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(L"C:\\t"), 0);
        EXPECT_EQ(toma_esperas().size(), 3u) << "what is left for good asks for no pass";
        EXPECT_EQ(v.arbol("C:\\t"), (lista{"a\\", "a\\ld\\"}));
    }
}

TEST(borrado_arbol, lo_que_se_queda_a_varias_alturas_no_pide_pasadas) {
    volumen_falso v;
    constexpr DWORD marcas = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    v.pon("C:\\t\\a", {{"l1", marcas, IO_REPARSE_TAG_SYMLINK}, {"l2", marcas, IO_REPARSE_TAG_SYMLINK}});
    v.pon("C:\\t\\b\\c", {{"l3", marcas, IO_REPARSE_TAG_SYMLINK}});
    for (const char* enlace : {"C:\\t\\a\\l1", "C:\\t\\a\\l2", "C:\\t\\b\\c\\l3"}) {
        v[enlace].codigo_al_borrar = ERROR_CANT_ACCESS_FILE;
    }
    EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(L"C:\\t"), 0);
    EXPECT_EQ(toma_esperas().size(), 0u);
    EXPECT_EQ(v.arbol("C:\\t"), (lista{"a\\", "a\\l1\\", "a\\l2\\", "b\\", "b\\c\\", "b\\c\\l3\\"}));
}

// Its entry is there, the directory is said not to be: what it holds nobody knows.
TEST(borrado_arbol, un_directorio_que_se_dice_que_falta_pide_otra_pasada) {
    for (const unsigned aparece : {3u, 99u}) {
        volumen_falso v;
        v.pon("C:\\t\\a", {{"f"}});
        v["C:\\t\\a"].codigo_al_abrir = ERROR_FILE_NOT_FOUND;
        unsigned pausas = 0;
        al_dormir([&](unsigned long) {
            if (++pausas == aparece) {
                v["C:\\t\\a"].codigo_al_abrir = ERROR_SUCCESS;
            }
        });
        const bool se_ve = aparece < 20;
        EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(L"C:\\t"), se_ve ? 1 : 0);
        EXPECT_EQ(toma_esperas().size(), se_ve ? aparece : 20u);
        EXPECT_EQ(v.hay("C:\\t\\a\\f"), !se_ve);
    }
}

// What of a directory could not be read may be files: where it stays, they may have stayed.
TEST(borrado_arbol, un_directorio_leido_a_medias_que_queda_no_cuenta_como_vacio) {
    volumen_falso v;
    v.pon("C:\\t\\a", {{"f"}});
    v["C:\\t\\a"].codigo_al_final = ERROR_NETNAME_DELETED;
    v["C:\\t\\a"].codigo_al_borrar = ERROR_CANT_ACCESS_FILE;
    EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(L"C:\\t"), 0);
    EXPECT_EQ(toma_esperas().size(), 20u);
    EXPECT_EQ(toma_informes().size(), 20u) << "each listing that breaks off";
    EXPECT_EQ(v.arbol("C:\\t"), lista{"a\\"});
}

// The listing shows it, the deletion says that it is gone: which of them is right the next pass tells.
TEST(borrado_arbol, un_fichero_que_se_dice_ido_pide_otra_pasada) {
    for (const unsigned se_va : {2u, 99u}) {
        volumen_falso v;
        v.pon("C:\\t", {{"f"}});
        v["C:\\t\\f"].codigo_al_borrar = ERROR_FILE_NOT_FOUND;
        unsigned pausas = 0;
        al_dormir([&](unsigned long) {
            if (++pausas == se_va) {
                v["C:\\t\\f"].codigo_al_borrar = ERROR_SUCCESS;
            }
        });
        const bool acaba = se_va < 20;
        EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(L"C:\\t"), acaba ? 1 : 0);
        EXPECT_EQ(toma_esperas().size(), acaba ? se_va : 20u);
        EXPECT_EQ(v.hay("C:\\t\\f"), !acaba);
    }
}

// The passes are silent but for this: whoever may not change the mark is told in each of them.
TEST(borrado_arbol, una_marca_que_no_se_quita_se_pregunta_en_cada_pasada) {
    buclrein_establece_politica(0, 0);
    volumen_falso v;
    v.pon("C:\\t", {{"f", FILE_ATTRIBUTE_READONLY}});
    v["C:\\t\\f"].codigo_al_borrar = v["C:\\t\\f"].codigo_al_marcar = ERROR_ACCESS_DENIED;
    EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(L"C:\\t"), 0);
    const std::vector<pregunta> preguntas = toma_preguntas();
    EXPECT_EQ(preguntas.size(), 20u);
    for (const pregunta& p : preguntas) {
        EXPECT_EQ(p.mensaje, "It is not possible to unlock the file 'C:\\t\\f'");
        EXPECT_EQ(p.codigo, 0u);
    }
    EXPECT_EQ(toma_esperas().size(), 20u);
    EXPECT_TRUE(v.hay("C:\\t\\f"));
}

// A name that the server refuses, or a server that has gone, is no file that has gone.
TEST(borrado_arbol, lo_que_falta_por_otra_cosa_que_su_nombre_es_una_negativa_como_otra) {
    buclrein_establece_politica(0, 0);
    const auto lo_que_pasa = [](const forma_de_borrar& f, DWORD codigo) {
        volumen_falso v;
        v.pon("C:\\t", {{"f"}, {"s", FILE_ATTRIBUTE_DIRECTORY}});
        v["C:\\t\\f"].codigo_al_borrar = v["C:\\t\\s"].codigo_al_borrar = codigo;
        lista pasa = {std::to_string(f.borra("C:\\t"))};
        for (const lista& mas : {toma_expresiones(), toma_avisos(), v.arbol("C:\\t")}) {
            pasa.insert(pasa.end(), mas.begin(), mas.end());
        }
        for (const pregunta& p : toma_preguntas()) {
            pasa.push_back(p.mensaje + " " + std::to_string(p.codigo));
        }
        pasa.push_back(std::to_string(toma_esperas().size()));
        return pasa;
    };
    for (const forma_de_borrar& f : formas_de_borrar) {
        const lista negado = lo_que_pasa(f, ERROR_CANT_ACCESS_FILE);
        EXPECT_NE(std::find(negado.begin(), negado.end(), "f"), negado.end()) << f.nombre;
        for (const DWORD codigo : {DWORD{ERROR_INVALID_NAME}, DWORD{ERROR_BAD_PATHNAME},
                                   DWORD{ERROR_BAD_NETPATH}, DWORD{ERROR_BAD_NET_NAME}}) {
            EXPECT_EQ(lo_que_pasa(f, codigo), negado) << f.nombre << " " << codigo;
        }
    }
}

// Another program has the directory open and shares it with nobody: what is in it is there, and unseen.
TEST(borrado_arbol, un_directorio_retenido_por_otro_no_cuenta_como_borrado) {
    for (const char* cual : {"t", "t\\sub"}) {
        for (const forma_de_borrar& f : formas_de_borrar) {
            if (!f.debe && std::string(f.nombre).find("si_es_posible") == std::string::npos) {
                continue;
            }
            const directorio_temporal d;
            siembra_arbol(d);
            otro_proceso otro(d.ruta(cual), GENERIC_READ, 0);
            const unsigned short respuesta = f.borra(d.ruta("t"));
            const bool lo_ve_todo = !f.recursiva && std::string(cual) != "t";
            EXPECT_EQ(respuesta, f.da_respuesta() ? 0 : no_contesta) << f.nombre << " " << cual;
            EXPECT_EQ(toma_expresiones(), f.debe && !lo_ve_todo ? lista{no_se_han_borrado_todos} : lista{})
                << f.nombre << " " << cual;
            EXPECT_TRUE(d.existe("t\\sub\\\u00f1.txt")) << f.nombre << " " << cual;
            EXPECT_EQ(toma_esperas().size(), f.quita_raiz ? 20u : 0u) << f.nombre << " " << cual;
            otro.suelta();
        }
    }
}

TEST(borrado_arbol, si_se_puede_nombra_los_ficheros_que_quedan) {
    const directorio_temporal d;
    siembra_arbol(d);
    const std::string ruta = d.ruta("t\\sub\\\u00f1.txt");
    otro_proceso otro(ruta, GENERIC_READ, FILE_SHARE_READ);
    ArrCADENA_u* quedan = arr_CreaCADENA_u(0);
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(d.ruta_w("t").c_str(), quedan), 0);
    ASSERT_EQ(arr_NumElemsCADENA_u(quedan), 1u);
    EXPECT_EQ(u8(arr_GetCADENA_u(quedan, 0)), ruta);
    EXPECT_EQ(d.arbol(), (lista{"fuera.txt", "t\\", "t\\sub\\", "t\\sub\\\u00f1.txt"}));
    otro.suelta();
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(d.ruta_w("t").c_str(), quedan), 1);
    EXPECT_EQ(arr_NumElemsCADENA_u(quedan), 1u) << "the list is the caller's: nothing is taken out of it";
    arr_DestruyeCADENA_u(&quedan);
    EXPECT_EQ(toma_esperas().size(), 0u) << "one pass, no pause";
}

namespace {

const papel papel_borra_arbol("borra_arbol", [] {
    hijo_listo();
    const texto_w ruta = hijo_dato();
    lumodir_establece_modo_servicio_sin_reintentos();
    return cdir_borra_contenido_directorio_si_es_posible_reintentando_u(ruta.c_str()) == 1 ? 0 : 1;
});

}  // namespace

TEST(borrado_arbol, dos_procesos_a_la_vez_acaban_bien_los_dos) {
    const directorio_temporal d;
    for (int i = 0; i < 300; ++i) {
        d.fichero("t\\" + std::to_string(i % 20) + "\\f" + std::to_string(i));
    }
    al_dormir([](unsigned long) { ::Sleep(5); });
    proceso_hijo otro("borra_arbol", d.ruta_w("t"));
    ASSERT_TRUE(otro.espera_listo());
    EXPECT_EQ(cdir_borra_contenido_directorio_si_es_posible_reintentando_u(d.ruta_w("t").c_str()), 1);
    EXPECT_EQ(otro.espera_fin(), 0u);
    // Whoever came last to a directory that the other was still reading may have had to leave it.
    cdir_borra_directorio_y_subdirectorios_reintentando_u(d.ruta_w("t").c_str());
    EXPECT_EQ(d.arbol(), lista{});
    toma_esperas();
}

// Each refusal of a file system alone, and all of them at once: the tree goes all the same.
TEST(borrado_arbol, cualquier_sistema_de_ficheros_vale) {
    for (unsigned cuales = 0; cuales < 128; ++cuales) {
        for (const forma_de_borrar& f : formas_de_borrar) {
            volumen_falso v;
            v.pon("C:\\d\\t", {{"a", FILE_ATTRIBUTE_READONLY}, {"f "}, {"con"}});
            v.pon("C:\\d\\t\\s.", {{"g"}});
            v.pon("C:\\d\\t\\s.\\u", {{"h", FILE_ATTRIBUTE_HIDDEN}});
            v.pon("C:\\d", {{"fuera"}});
            v.rechaza_relativo = (cuales & 1) != 0 ? ERROR_INVALID_PARAMETER : 0;
            v.rechaza_con_numeros = (cuales & 2) != 0 ? ERROR_INVALID_LEVEL : 0;
            v.rechaza_sin_numeros = (cuales & 4) != 0 ? ERROR_INTERNAL_ERROR : 0;
            v.rechaza_posix = (cuales & 8) != 0 ? ERROR_NOT_SUPPORTED : 0;
            v.conoce_sin_seguir = (cuales & 16) == 0;
            v.dice_numeros = (cuales & 2) == 0;
            v.desfase_de_manijas = (cuales & 32) != 0 ? 2 : 0;
            v.desfase_de_punto = (cuales & 64) != 0 ? 1 : 0;
            const unsigned short respuesta = f.borra("C:\\d\\t");
            EXPECT_EQ(respuesta, f.da_respuesta() ? 1 : no_contesta) << f.nombre << " " << cuales;
            lista queda{"t\\", "fuera"};
            if (!f.recursiva) {
                queda = {"t\\", "t\\s.\\", "t\\s.\\g", "t\\s.\\u\\", "t\\s.\\u\\h", "fuera"};
            } else if (f.quita_raiz) {
                queda = {"fuera"};
            }
            EXPECT_EQ(v.arbol("C:\\d"), queda) << f.nombre << " " << cuales;
            EXPECT_EQ(toma_esperas().size(), 0u) << f.nombre << " " << cuales;
        }
    }
}

// Somebody puts a link, or another directory, in a directory's place before each opening and each reading in turn.
TEST(borrado_arbol, cambiar_directorios_en_cualquier_momento_no_lleva_fuera) {
    buclrein_establece_politica(0, 0);
    struct volumen {
        DWORD rechazo;
        unsigned long long desfase_de_manijas;
        unsigned long long desfase_de_punto;
        const char* victima;
        bool por_enlace;
    };
    std::vector<volumen> volumenes;
    for (const char* victima : {"C:\\d\\t", "C:\\d\\t\\s", "C:\\d\\t\\s\\u"}) {
        for (const bool por_enlace : {true, false}) {
            for (const DWORD rechazo : {DWORD{0}, DWORD{ERROR_NOT_SUPPORTED}}) {
                volumenes.push_back({rechazo, 0, 0, victima, por_enlace});
                volumenes.push_back({rechazo, 2, 0, victima, por_enlace});
                volumenes.push_back({rechazo, 2, 1, victima, por_enlace});
            }
        }
    }
    for (const forma_de_borrar& f : formas_de_borrar) {
        for (const volumen& caso : volumenes) {
            bool ha_tocado = true;
            for (unsigned n = 1; ha_tocado; ++n) {
                ASSERT_LT(n, 2'000u);
                volumen_falso v;
                v.pon("C:\\d\\t", {{"a"}});
                v.pon("C:\\d\\t\\s", {{"a"}});
                v.pon("C:\\d\\t\\s\\u", {{"a"}});
                v.pon("C:\\fuera", {{"a"}, {"valioso"}});
                v.pon("C:\\fuera\\s", {{"a"}});
                v.pon("C:\\fuera\\s\\u", {{"a"}});
                v.pon("C:\\fuera\\u", {{"a"}});
                const lista fuera = v.arbol("C:\\fuera");
                v.rechaza_relativo = caso.rechazo;
                v.desfase_de_manijas = caso.desfase_de_manijas;
                v.desfase_de_punto = caso.desfase_de_punto;
                unsigned van = 0;
                ha_tocado = false;
                const auto cambia = [&] {
                    if (++van == n && v.hay(caso.victima)) {
                        ha_tocado = true;
                        caso.por_enlace
                            ? v.cambia(caso.victima, {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"})
                            : v.cambia(caso.victima, {"", FILE_ATTRIBUTE_DIRECTORY}, {{"ajeno"}});
                    }
                };
                v.al_abrir = [&](const std::string&) { cambia(); };
                v.al_listar = cambia;
                f.borra("C:\\d\\t");
                ha_tocado = ha_tocado || van >= n;
                EXPECT_EQ(v.arbol("C:\\fuera"), fuera) << f.nombre << " " << caso.victima << " at " << n
                                                       << ", handles " << caso.desfase_de_manijas;
                EXPECT_EQ(v.abiertas(), 0u) << f.nombre << " " << caso.victima << " at " << n;
                olvida_todo();
            }
        }
    }
}

// A read-only file whose attributes may not be read: its entry has told them.
TEST(borrado_arbol, de_lo_que_no_se_puede_mirar_se_sabe_lo_que_dice_su_entrada) {
    static decltype(interno::sistema.abre_entrada) antes;
    static DWORD codigo;
    for (const DWORD uno : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_SHARING_VIOLATION}}) {
        codigo = uno;
        for (const forma_de_borrar& f : formas_de_borrar) {
            const directorio_temporal d;
            d.fichero("t\\a", "x", FILE_ATTRIBUTE_READONLY);
            d.fichero("t\\b");
            antes = interno::sistema.abre_entrada;
            const sustituye nadie_mira(
                interno::sistema.abre_entrada,
                [](const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD compartir, DWORD opciones,
                   DWORD atributos) -> HANDLE {
                    constexpr DWORD de_fichero = 0x40;  // FILE_NON_DIRECTORY_FILE
                    if ((acceso & FILE_READ_ATTRIBUTES) != 0 && (opciones & de_fichero) != 0) {
                        ::SetLastError(codigo);
                        return INVALID_HANDLE_VALUE;
                    }
                    return antes(nombre, directorio, acceso, compartir, opciones, atributos);
                });
            EXPECT_EQ(f.borra(d.ruta("t")), f.da_respuesta() ? 1 : no_contesta) << f.nombre;
            EXPECT_EQ(d.arbol(), f.quita_raiz ? lista{} : lista{"t\\"}) << f.nombre;
        }
    }
}

// To the Windows API these are paths.
TEST(borrado_arbol, una_entrada_con_separador_en_su_nombre_no_se_toca_y_cuenta) {
    buclrein_establece_politica(0, 0);
    for (const char* nombre : {"..\\fuera", "../fuera", "s\\..", "\\"}) {
        for (const bool es_directorio : {true, false}) {
            for (const forma_de_borrar& f : formas_de_borrar) {
                if (!f.recursiva && es_directorio) {
                    continue;
                }
                volumen_falso v;
                v.pon("C:\\d\\t", {{nombre, es_directorio ? DWORD{FILE_ATTRIBUTE_DIRECTORY}
                                                          : DWORD{FILE_ATTRIBUTE_NORMAL}},
                                   {"f"}});
                v.pon("C:\\d\\fuera", {{"a"}});
                v.pon("C:\\d", {{"fuera"}});
                EXPECT_NE(f.borra("C:\\d\\t"), 1) << f.nombre << " " << nombre;
                EXPECT_EQ(v.arbol("C:\\d\\t"), lista{std::string(nombre) + (es_directorio ? "\\" : "")})
                    << f.nombre << " " << nombre;
                EXPECT_EQ(v.arbol("C:\\d\\fuera"), lista{"a"}) << f.nombre << " " << nombre;
                EXPECT_EQ(toma_expresiones(), f.debe ? lista{no_se_han_borrado_todos} : lista{})
                    << f.nombre << " " << nombre;
                EXPECT_EQ(toma_avisos(), lista{}) << "it is not missing";
                toma_preguntas();
                toma_esperas();
            }
        }
    }
}

TEST(borrado_arbol, un_directorio_de_solo_lectura_se_quita_y_si_se_queda_sigue_siendolo) {
    constexpr DWORD marcado = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM;
    buclrein_establece_politica(0, 0);
    for (const forma_de_borrar& f : formas_de_borrar) {
        for (const bool se_queda : {false, true}) {
            volumen_falso v;
            v.pon("C:\\d\\t\\s", {{"g"}});
            v["C:\\d\\t\\s"].atributos = marcado;
            v["C:\\d\\t"].atributos = marcado;
            for (const char* cual : {"C:\\d\\t", "C:\\d\\t\\s"}) {
                v[cual].codigo_al_borrar = se_queda ? ERROR_ACCESS_DENIED : 0;
            }
            f.borra("C:\\d\\t");
            EXPECT_EQ(v.hay("C:\\d\\t\\s\\g"), !f.recursiva) << f.nombre;
            EXPECT_EQ(v.hay("C:\\d\\t\\s"), se_queda || !f.recursiva) << f.nombre;
            EXPECT_EQ(v.hay("C:\\d\\t"), se_queda || !f.quita_raiz) << f.nombre;
            for (const char* cual : {"C:\\d\\t", "C:\\d\\t\\s"}) {
                if (v.hay(cual)) {
                    EXPECT_EQ(v[cual].atributos, marcado) << f.nombre << " " << cual;
                }
            }
            toma_preguntas();
            toma_esperas();
        }
    }
}

TEST(borrado_arbol, un_directorio_cuya_marca_no_se_quita_se_queda_con_ella) {
    constexpr DWORD marcado = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
    buclrein_establece_politica(0, 0);
    for (const forma_de_borrar& f : formas_de_borrar) {
        volumen_falso v;
        v.pon("C:\\d\\t\\s", {});
        v["C:\\d\\t\\s"].atributos = marcado;
        static decltype(interno::sistema.SetFileInformationByHandle) debajo;
        debajo = interno::sistema.SetFileInformationByHandle;
        const sustituye pone(interno::sistema.SetFileInformationByHandle,
                             [](HANDLE h, FILE_INFO_BY_HANDLE_CLASS clase, LPVOID datos, DWORD bytes)
                                 WINAPI -> BOOL {
                                     if (clase == FileBasicInfo) {
                                         ::SetLastError(ERROR_ACCESS_DENIED);
                                         return FALSE;
                                     }
                                     return debajo(h, clase, datos, bytes);
                                 });
        f.borra("C:\\d\\t");
        EXPECT_TRUE(v.hay("C:\\d\\t\\s")) << f.nombre;
        EXPECT_EQ(v["C:\\d\\t\\s"].atributos, marcado) << f.nombre;
        EXPECT_EQ(v.borrados, lista{}) << f.nombre;
        olvida_todo();
    }
}

TEST(borrado_arbol, una_raiz_que_es_un_enlace_de_solo_lectura_se_quita_ella_misma) {
    buclrein_establece_politica(0, 0);
    constexpr DWORD marcado = enlace_dir | FILE_ATTRIBUTE_READONLY;
    for (const forma_de_borrar& f : formas_de_borrar) {
        for (const bool se_queda : {false, true}) {
            volumen_falso v;
            v.pon("C:\\fuera", {{"g"}});
            v["C:\\fuera"].atributos |= FILE_ATTRIBUTE_READONLY;
            v.pon("C:\\d", {{"t", marcado, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"}});
            v["C:\\d\\t"].codigo_al_borrar = se_queda ? ERROR_ACCESS_DENIED : 0;
            f.borra("C:\\d\\t");
            EXPECT_EQ(v.hay("C:\\d\\t"), se_queda || !f.quita_raiz) << f.nombre;
            EXPECT_TRUE(!v.hay("C:\\d\\t") || v["C:\\d\\t"].atributos == marcado) << f.nombre;
            EXPECT_TRUE(v.hay("C:\\fuera\\g")) << f.nombre;
            EXPECT_EQ(v["C:\\fuera"].atributos, DWORD{FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY})
                << f.nombre;
            olvida_todo();
        }
    }
}

TEST(borrado_arbol, con_cualquier_llamada_fallando_nada_de_fuera_se_toca_ni_se_pierde_memoria) {
    const directorio_temporal d;
    buclrein_establece_politica(1, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    for (const forma_de_borrar& f : formas_de_borrar) {
        if (es_gemela(f)) {
            continue;
        }
        con_cada_fallo(
            [&] {
                d.limpia();
                d.fichero("t\\a", "x", FILE_ATTRIBUTE_READONLY);
                d.fichero("t\\s\\b");
                d.fichero("fuera.txt", "contenido", FILE_ATTRIBUTE_READONLY);
            },
            [&] { f.borra(d.ruta("t")); },
            [&](const ronda& r) {
                EXPECT_EQ(d.contenido("fuera.txt"), "contenido") << f.nombre << " " << r;
                EXPECT_TRUE(d.es_de_solo_lectura("fuera.txt")) << f.nombre << " " << r;
                EXPECT_TRUE(f.recursiva || d.existe("t\\s\\b")) << f.nombre << " " << r;
                if (r.limpia && f.recursiva) {
                    EXPECT_EQ(d.existe("t"), !f.quita_raiz) << f.nombre;
                }
                olvida_todo();
            });
    }
}

// The ways round a file system that refuses much, with each of their calls failing too.
TEST(borrado_arbol, tampoco_por_los_rodeos_queda_nada_cuando_falla_una_llamada) {
    buclrein_establece_politica(1, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    for (const unsigned rodeo : {1u, 2u, 3u, 7u}) {
        for (const forma_de_borrar& f : formas_de_borrar) {
            if (es_gemela(f) || !f.recursiva) {
                continue;
            }
            volumen_falso v;
            v.rechaza_relativo = (rodeo & 1) != 0 ? ERROR_NOT_SUPPORTED : 0;
            v.desfase_de_manijas = (rodeo & 2) != 0 ? 2 : 0;
            v.desfase_de_punto = (rodeo & 2) != 0 ? 1 : 0;
            v.rechaza_con_numeros = v.rechaza_sin_numeros = (rodeo & 4) != 0 ? ERROR_NOT_SUPPORTED : 0;
            v.pon("C:\\d", {{"fuera"}});
            con_cada_fallo(
                [&] {
                    v["C:\\d"].hijos.resize(1);
                    v.pon("C:\\d\\t", {{"a", FILE_ATTRIBUTE_READONLY}});
                    v.pon("C:\\d\\t\\s", {{"b"}});
                },
                [&] { f.borra("C:\\d\\t"); },
                [&](const ronda& r) {
                    EXPECT_EQ(v.abiertas(), 0u) << f.nombre << " " << r;
                    EXPECT_TRUE(v.hay("C:\\d\\fuera")) << f.nombre << " " << r;
                    if (r.limpia) {
                        EXPECT_EQ(v.arbol("C:\\d"), f.quita_raiz ? lista{"fuera"} : (lista{"fuera", "t\\"}))
                            << f.nombre << " " << rodeo;
                    }
                    olvida_todo();
                });
        }
    }
}
