// Paths that are not full, while the current directory changes under the operation: before each of its system calls,
// in the retry question, in the file-open callback, in a pause, and all the time in another thread. Two directories
// with the same things in them stand for "what was meant" and "what the text means now".
#include "apoyo/fallos.hpp"
#include "apoyo/formas_de_borrar.hpp"
#include "companions/buclrein.h"
#include "companions/sistema.hpp"
#include "lumodir.h"
#include "timefich.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

constexpr long long dia_de_siembra = 1'000'000'000;

void siembra_operandos(const directorio_temporal& d) {
    for (const char* fichero :
         {"f.txt", "g.txt", "t\\a", "t\\s\\b", "t\\s\\h\\c", "e\\a.tmp", "e\\a.bak", "e\\b.tmp"}) {
        d.fichero(fichero, fichero);
    }
    d.fichero("p.txt", "p", FILE_ATTRIBUTE_READONLY);
    d.fichero("t\\p", "p", FILE_ATTRIBUTE_READONLY);
    d.directorio("v\\w\\x");
    d.pon_fecha("f.txt", dia_de_siembra);
}

// All that an operation could change.
lista estado(const directorio_temporal& d) {
    lista resultado = d.arbol();
    for (std::string& entrada : resultado) {
        if (entrada.back() != '\\') {
            entrada += d.es_de_solo_lectura(entrada) ? " read-only: " + d.contenido(entrada)
                                                     : ": " + d.contenido(entrada);
        }
    }
    WIN32_FILE_ATTRIBUTE_DATA datos = {};
    if (::GetFileAttributesExW(d.ruta_w("f.txt").c_str(), GetFileExInfoStandard, &datos)) {
        const auto fecha = static_cast<long long>(
            (static_cast<unsigned long long>(datos.ftLastWriteTime.dwHighDateTime) << 32) |
            datos.ftLastWriteTime.dwLowDateTime);
        resultado.push_back("f.txt of " + std::to_string(fecha / 10'000'000 - 11'644'473'600));
    }
    return resultado;
}

void ve_a(const texto_w& donde) {
    EXPECT_TRUE(::SetCurrentDirectoryW(donde.c_str())) << u8(donde);
}

using ruta_de = std::function<std::string(const std::string&)>;

// An operation on paths that `r` spells; its answer, or one for those without.
struct operacion {
    std::string nombre;
    std::function<int(const ruta_de& r)> haz;
    unsigned paths = 1;  // how many the caller gives
};

std::vector<operacion> todas() {
    std::vector<operacion> resultado = {
        {"borra_fichero_UNICODE",
         [](const ruta_de& r) { return llama(cdir_borra_fichero_UNICODE, r("f.txt")); }},
        {"borra_fichero", [](const ruta_de& r) { return llama(cdir_borra_fichero, r("f.txt")); }},
        {"borra_fichero_UNICODE, read-only",
         [](const ruta_de& r) { return llama(cdir_borra_fichero_UNICODE, r("p.txt")); }},
        {"borra_fichero_con_mensaje_extra_UNICODE",
         [](const ruta_de& r) {
             return llama(cdir_borra_fichero_con_mensaje_extra_UNICODE, r("p.txt"), "extra");
         }},
        {"borra_fichero_si_existe_UNICODE",
         [](const ruta_de& r) { return llama(cdir_borra_fichero_si_existe_UNICODE, r("p.txt")); }},
        {"borra_fichero_si_existe",
         [](const ruta_de& r) { return llama(cdir_borra_fichero_si_existe, r("p.txt")); }},
        {"lumodir_borra_fichero_si_existe_UNICODE",
         [](const ruta_de& r) {
             unsigned short error = 9;
             lumodir_borra_fichero_si_existe_UNICODE(w(r("p.txt")).c_str(), &error);
             return int{error};
         }},
        {"delete_ficheros_UNICODE",
         [](const ruta_de& r) { return llama(cdir_delete_ficheros_UNICODE, r("*.txt")); }},
        {"delete_ficheros, in a directory",
         [](const ruta_de& r) { return llama(cdir_delete_ficheros, r("e\\*.tmp")); }},
        {"cambia_extension_ficheros_u",
         [](const ruta_de& r) { return llama(cdir_cambia_extension_ficheros_u, r("e"), "tmp", "bak"); }},
        {"borra_directorio_UNICODE",
         [](const ruta_de& r) { return llama(cdir_borra_directorio_UNICODE, r("v\\w\\x")); }},
        {"borra_directorio", [](const ruta_de& r) { return llama(cdir_borra_directorio, r("v\\w\\x")); }},
        {"borra_directorio_si_existe_UNICODE",
         [](const ruta_de& r) { return llama(cdir_borra_directorio_si_existe_UNICODE, r("v\\w\\x")); }},
        {"se_borra_directorio",
         [](const ruta_de& r) { return llama(cdir_se_borra_directorio, r("v\\w\\x")); }},
        {"renombra_fichero_UNICODE",
         [](const ruta_de& r) { return llama(cdir_renombra_fichero_UNICODE, r("f.txt"), r("n.txt")); }, 2},
        {"renombra_fichero",
         [](const ruta_de& r) { return llama(cdir_renombra_fichero, r("f.txt"), r("t\\n.txt")); }, 2},
        {"renombra_fichero_si_es_posible_UNICODE",
         [](const ruta_de& r) {
             return llama(cdir_renombra_fichero_si_es_posible_UNICODE, r("f.txt"), r("n.txt"));
         },
         2},
        {"mueve_fichero",
         [](const ruta_de& r) { return llama(cdir_mueve_fichero, r("f.txt"), r("v\\f.txt")); }, 2},
        {"protege_fichero_UNICODE",
         [](const ruta_de& r) { return llama(lumodir_protege_fichero_UNICODE, r("f.txt")); }},
        {"protege_fichero", [](const ruta_de& r) { return llama(lumodir_protege_fichero, r("f.txt")); }},
        {"desprotege_fichero_UNICODE",
         [](const ruta_de& r) { return llama(lumodir_desprotege_fichero_UNICODE, r("p.txt")); }},
        {"desprotege_fichero_si_existe_UNICODE",
         [](const ruta_de& r) { return llama(lumodir_desprotege_fichero_si_existe_UNICODE, r("p.txt")); }},
        {"crea_directorios_UNICODE",
         [](const ruta_de& r) { return llama(cdir_crea_directorios_UNICODE, r("n\\m\\l"), 1); }},
        {"crea_directorios_fichero_UNICODE",
         [](const ruta_de& r) { return llama(cdir_crea_directorios_fichero_UNICODE, r("n\\m\\f")); }},
        {"crea_directorios", [](const ruta_de& r) { return llama(cdir_crea_directorios, r("v\\n\\m"), 1); }},
        {"crea_directorios_si_es_posible_UNICODE, with two points",
         [](const ruta_de& r) {
             return llama(cdir_crea_directorios_si_es_posible_UNICODE, r("n\\x\\..\\m"));
         }},
        {"asignar_fecha_fichero_UTC",
         [](const ruta_de& r) {
             return llama(timefich_asignar_fecha_fichero_UTC, r("f.txt"), 1'500'000'000);
         }},
        {"asignar_fecha_fichero_ansi_UTC",
         [](const ruta_de& r) {
             return llama(timefich_asignar_fecha_fichero_ansi_UTC, r("f.txt"), 1'500'000'000);
         }},
        {"asignar_fecha_fichero_UTC_si_es_posible",
         [](const ruta_de& r) {
             return llama(timefich_asignar_fecha_fichero_UTC_si_es_posible, r("f.txt"), 1'500'000'000);
         }},
        {"se_puede_escribir_UNICODE_ex",
         [](const ruta_de& r) { return llama(lumodir_se_puede_escribir_UNICODE_ex, r("n.txt"), nullptr); }},
        {"se_puede_escribir_en_directorio",
         [](const ruta_de& r) { return llama(cdir_se_puede_escribir_en_directorio, r("n\\m"), nullptr); }},
        {"borra_directorios_de_path_si_estan_vacios_UNICODE",
         [](const ruta_de& r) {
             return llama(lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE, r("v\\w\\x"), r("v"));
         },
         2},
        {"borra_directorios_de_path_si_estan_vacios",
         [](const ruta_de& r) {
             return llama(lumodir_borra_directorios_de_path_si_estan_vacios, r("v\\w\\x"), r("v"));
         },
         2},
    };
    for (const forma_de_borrar& f : formas_de_borrar) {
        resultado.push_back({f.nombre, [&f](const ruta_de& r) { return int{f.borra(r("t"))}; }});
    }
    return resultado;
}

// How a text leaves the directory, or the drive, to the process.
struct escritura {
    const char* nombre;
    std::function<std::string(const directorio_temporal&, const std::string&)> escribe;
    bool otra_unidad = false;
};
const escritura escrituras[] = {
    {"relative", [](const directorio_temporal&, const std::string& r) { return r; }},
    {"of the drive's current directory",
     [](const directorio_temporal& d, const std::string& r) { return d.ruta().substr(0, 2) + r; }},
    {"from the root of the current drive",
     [](const directorio_temporal& d, const std::string& r) { return d.ruta().substr(2) + "\\" + r; }, true},
};

// The root of a drive that is not that of the directory; empty without one.
texto_w otra_unidad(const directorio_temporal& d) {
    for (char letra = 'Z'; letra >= 'D'; --letra) {
        const texto_w raiz = w(std::string(1, letra) + ":\\");
        if (letra != d.ruta()[0] && ::GetFileAttributesW(raiz.c_str()) != INVALID_FILE_ATTRIBUTES) {
            return raiz;
        }
    }
    return {};
}

void nada_que_decir(const std::string& de) {
    EXPECT_EQ(toma_expresiones(), lista{}) << de;
    EXPECT_EQ(toma_avisos(), lista{}) << de;
    EXPECT_EQ(toma_preguntas().size(), 0u) << de;
}

}  // namespace

TEST(nombres_atados, el_directorio_actual_cambia_antes_de_cada_llamada) {
    buclrein_establece_politica(0, 0);
    const directorio_temporal a;
    const directorio_temporal b;
    const directorio_actual_restaurado restaura;
    for (const escritura& como : escrituras) {
        const texto_w adonde = como.otra_unidad ? otra_unidad(a) : b.ruta_w();
        if (adonde.empty()) {
            std::cout << "no second drive here: texts from the root are not tried\n";
            continue;
        }
        b.limpia();
        siembra_operandos(b);
        const lista otro = estado(b);
        std::size_t turno = static_cast<std::size_t>(&como - escrituras);
        for (const operacion& op : todas()) {
            // In short each way of writing has its turn with a third of the operations, the first with all.
            if (!a_fondo() && &como != escrituras && turno++ % 3 != 0) {
                continue;
            }
            const std::string de = op.nombre + ", " + como.nombre;
            const ruta_de r = [&](const std::string& relativa) { return como.escribe(a, relativa); };
            a.limpia();
            siembra_operandos(a);
            ve_a(a.ruta_w());
            unsigned llamadas = 0;
            int respuesta = 0;
            {
                fallos libro;
                respuesta = op.haz(r);
                llamadas = static_cast<unsigned>(libro.llamadas());
            }
            const lista esperado = estado(a);
            nada_que_decir(de);
            // By the first call, or the first of each path, the text has got its full form.
            for (unsigned n = op.paths + 1; n <= llamadas;
                 n += 1 + (&como == escrituras && a_fondo() ? n / 6 : n)) {
                a.limpia();
                siembra_operandos(a);
                ve_a(a.ruta_w());
                {
                    fallos libro;
                    libro.al_llamar([&](unsigned cual) {
                        if (cual == n) {
                            ve_a(adonde);
                        }
                    });
                    EXPECT_EQ(op.haz(r), respuesta) << de << ", call " << n;
                    EXPECT_EQ(libro.manijas_abiertas(), 0u) << de << ", call " << n;
                }
                EXPECT_EQ(estado(a), esperado) << de << ", call " << n;
                EXPECT_EQ(estado(b), otro) << de << ", call " << n << ": the other directory has changed";
                nada_que_decir(de);
                if (testing::Test::HasFailure() && estado(b) != otro) {
                    b.limpia();
                    siembra_operandos(b);
                    break;
                }
                toma_esperas();
            }
        }
    }
}

namespace {

// An operation that is held up, and what of the host or of the library may run then.
struct retenida {
    std::string nombre;
    const char* que;                             // held open by somebody who shares nothing
    std::function<int(const std::string&)> haz;  // with what stands before each name
    lista momentos;
    std::string se_dice = {};  // of the path, in the question, as it was given
    int respuesta = no_contesta;
};

std::vector<retenida> retenidas() {
    const lista de_borrado = {"question", "callback", "pause"};
    const lista con_pregunta = {"question", "pause"};
    std::vector<retenida> resultado = {
        {"borra_fichero_UNICODE", "f.txt",
         [](const std::string& p) { return llama(cdir_borra_fichero_UNICODE, p + "f.txt"); }, de_borrado,
         "f.txt", 1},
        {"borra_fichero", "f.txt",
         [](const std::string& p) { return llama(cdir_borra_fichero, p + "f.txt"); }, de_borrado, "f.txt"},
        {"borra_fichero_UNICODE, read-only", "p.txt",
         [](const std::string& p) { return llama(cdir_borra_fichero_UNICODE, p + "p.txt"); }, de_borrado,
         "p.txt", 1},
        {"borra_fichero_con_mensaje_extra_UNICODE", "f.txt",
         [](const std::string& p) {
             return llama(cdir_borra_fichero_con_mensaje_extra_UNICODE, p + "f.txt", "extra");
         },
         de_borrado, "f.txt", 1},
        {"borra_fichero_con_mensaje_extra", "f.txt",
         [](const std::string& p) {
             return llama(cdir_borra_fichero_con_mensaje_extra, p + "f.txt", "extra");
         },
         de_borrado, "f.txt"},
        {"borra_fichero_si_existe_UNICODE", "f.txt",
         [](const std::string& p) { return llama(cdir_borra_fichero_si_existe_UNICODE, p + "f.txt"); },
         de_borrado, "f.txt", 1},
        {"borra_fichero_si_existe", "f.txt",
         [](const std::string& p) { return llama(cdir_borra_fichero_si_existe, p + "f.txt"); }, de_borrado,
         "f.txt"},
        {"lumodir_borra_fichero_si_existe_UNICODE",
         "f.txt",
         [](const std::string& p) {
             unsigned short error = 9;
             lumodir_borra_fichero_si_existe_UNICODE(w(p + "f.txt").c_str(), &error);
             return int{error};
         },
         {"callback", "pause"},
         "",
         0},
        {"lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE",
         "f.txt",
         [](const std::string& p) {
             unsigned short error = 9;
             lumodir_borra_fichero_con_mensaje_extra_si_existe_UNICODE(w(p + "f.txt").c_str(), L"extra",
                                                                       &error);
             return int{error};
         },
         {"callback", "pause"},
         "",
         0},
        {"borra_directorio_UNICODE", "v\\w\\x",
         [](const std::string& p) { return llama(cdir_borra_directorio_UNICODE, p + "v\\w\\x"); },
         con_pregunta, "v\\w\\x", 1},
        {"borra_directorio", "v\\w\\x",
         [](const std::string& p) { return llama(cdir_borra_directorio, p + "v\\w\\x"); }, con_pregunta,
         "v\\w\\x"},
        {"borra_directorio_si_existe_UNICODE", "v\\w\\x",
         [](const std::string& p) { return llama(cdir_borra_directorio_si_existe_UNICODE, p + "v\\w\\x"); },
         con_pregunta, "v\\w\\x", 1},
        {"se_borra_directorio",
         "v\\w\\x",
         [](const std::string& p) { return llama(cdir_se_borra_directorio, p + "v\\w\\x"); },
         {"pause"},
         "",
         1},
        {"renombra_fichero_UNICODE", "f.txt",
         [](const std::string& p) { return llama(cdir_renombra_fichero_UNICODE, p + "f.txt", p + "n.txt"); },
         con_pregunta, "f.txt"},
        {"renombra_fichero", "f.txt",
         [](const std::string& p) { return llama(cdir_renombra_fichero, p + "f.txt", p + "n.txt"); },
         con_pregunta, "f.txt"},
        {"cambia_extension_ficheros_u", "e\\a.tmp",
         [](const std::string& p) { return llama(cdir_cambia_extension_ficheros_u, p + "e", "tmp", "bak"); },
         con_pregunta, "e\\a.tmp"},
        {"cambia_extension_ficheros_u, target held", "e\\a.bak",
         [](const std::string& p) { return llama(cdir_cambia_extension_ficheros_u, p + "e", "tmp", "bak"); },
         de_borrado, "e\\a.bak"},
        {"asignar_fecha_fichero_UTC", "f.txt",
         [](const std::string& p) {
             return llama(timefich_asignar_fecha_fichero_UTC, p + "f.txt", 1'500'000'000);
         },
         con_pregunta, "f.txt", 1},
        {"asignar_fecha_fichero_ansi_UTC", "f.txt",
         [](const std::string& p) {
             return llama(timefich_asignar_fecha_fichero_ansi_UTC, p + "f.txt", 1'500'000'000);
         },
         con_pregunta, "f.txt", 1},
        {"asignar_fecha_fichero_UTC_si_es_posible",
         "f.txt",
         [](const std::string& p) {
             return llama(timefich_asignar_fecha_fichero_UTC_si_es_posible, p + "f.txt", 1'500'000'000);
         },
         {"pause"},
         "",
         1},
    };
    for (const forma_de_borrar& f : formas_de_borrar) {
        if (&f == &formas_de_borrar[std::size(formas_de_borrar) - 1]) {
            continue;  // one pass without a pause
        }
        const bool estricta = !f.por_pasadas;
        resultado.push_back({f.nombre, "t\\a", [&f](const std::string& p) { return int{f.borra(p + "t")}; },
                             estricta ? de_borrado : lista{"pause"}, estricta ? "t\\a" : "",
                             f.da_respuesta() ? 1 : no_contesta});
        if (f.recursiva) {
            resultado.push_back({std::string(f.nombre) + ", further down", "t\\s\\h\\c",
                                 [&f](const std::string& p) { return int{f.borra(p + "t\\")}; },
                                 estricta ? de_borrado : lista{"pause"}, estricta ? "t\\s\\h\\c" : "",
                                 f.da_respuesta() ? 1 : no_contesta});
        }
    }
    return resultado;
}

std::function<void()> g_al_preguntar_si_esta_abierto;
unsigned short pregunta_si_esta_abierto(const wchar_t*) {
    g_al_preguntar_si_esta_abierto();
    return 0;
}

}  // namespace

TEST(nombres_atados, el_anfitrion_cambia_de_directorio_mientras_se_reintenta) {
    const directorio_temporal a;
    const directorio_temporal b;
    const directorio_actual_restaurado restaura;
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    siembra_operandos(b);
    const lista otro = estado(b);
    std::size_t turno = 0;
    for (const retenida& op : retenidas()) {
        for (const std::string& cuando : op.momentos) {
            for (const std::string& principio : {std::string(), a.ruta().substr(0, 2)}) {
                if (!a_fondo() && turno++ % 2 != 0) {
                    continue;  // in short they take turns
                }
                const std::string de = op.nombre + ", " + cuando + ", '" + principio + "'";
                buclrein_establece_politica(cuando == "question" ? 0 : 5, 10);
                // What nobody holds shows what the operation does.
                a.limpia();
                siembra_operandos(a);
                op.haz(a.ruta() + "\\");
                const lista esperado = estado(a);
                nada_que_decir(de);

                a.limpia();
                siembra_operandos(a);
                ve_a(a.ruta_w());
                HANDLE sujeto = a.abre(op.que, GENERIC_READ, 0);
                ASSERT_NE(sujeto, INVALID_HANDLE_VALUE) << de;
                unsigned veces = 0;
                unsigned preguntado = 0;
                const auto entretanto = [&] {
                    ++veces;
                    ve_a(b.ruta_w());
                    if (sujeto != INVALID_HANDLE_VALUE) {
                        ::CloseHandle(sujeto);
                        sujeto = INVALID_HANDLE_VALUE;
                    }
                };
                contesta([&](const pregunta& p) -> unsigned short {
                    EXPECT_NE(p.mensaje.find(principio + op.se_dice), std::string::npos)
                        << de << ": " << p.mensaje;
                    EXPECT_EQ(p.mensaje.find(a.ruta() + "\\" + op.se_dice), std::string::npos)
                        << "the path as it was given";
                    if (cuando == "question") {
                        entretanto();
                    }
                    return ++preguntado < 3 ? 1 : 0;
                });
                al_dormir([&](unsigned long) {
                    if (cuando == "pause") {
                        entretanto();
                    }
                });
                g_al_preguntar_si_esta_abierto = entretanto;
                if (cuando == "callback") {
                    lumodir_set_func_comprobar_fichero_no_esta_abierto(pregunta_si_esta_abierto);
                }
                {
                    fallos libro;
                    EXPECT_EQ(op.haz(principio), op.respuesta) << de;
                    EXPECT_EQ(libro.manijas_abiertas(), 0u) << de;
                }
                lumodir_set_func_comprobar_fichero_no_esta_abierto(nullptr);
                EXPECT_GE(veces, 1u) << de << ": nothing came between";
                if (sujeto != INVALID_HANDLE_VALUE) {
                    ::CloseHandle(sujeto);
                }
                EXPECT_EQ(estado(a), esperado) << de;
                if (estado(b) != otro) {
                    ADD_FAILURE() << de << ": the other directory has changed";
                    b.limpia();
                    siembra_operandos(b);
                }
                toma_preguntas();
                toma_esperas();
                toma_avisos();
                EXPECT_EQ(toma_expresiones(), lista{}) << de;
            }
        }
    }
}

// What is not there at first, and comes while the host is asked: in the directory that was meant.
TEST(nombres_atados, lo_que_falta_se_espera_en_su_directorio) {
    const directorio_temporal a;
    const directorio_temporal b;
    const directorio_actual_restaurado restaura;
    struct fila {
        const char* nombre;
        bool con_pregunta;
        std::function<void(const directorio_temporal&)> estorba;  // before
        std::function<void(const directorio_temporal&)> remedia;  // in between
        std::function<int()> haz;
        int respuesta;
    };
    const auto nada = [](const directorio_temporal&) {};
    const auto sin_f = [](const directorio_temporal& d) { d.borra("f.txt"); };
    const auto con_f = [](const directorio_temporal& d) {
        d.fichero("f.txt", "f.txt");
        d.pon_fecha("f.txt", dia_de_siembra);
    };
    const auto con_fichero_n = [](const directorio_temporal& d) { d.fichero("n"); };
    const auto sin_n = [](const directorio_temporal& d) { d.borra("n"); };
    const auto sin_v = [](const directorio_temporal& d) { d.borra("v"); };
    const auto con_v = [](const directorio_temporal& d) { d.directorio("v"); };
    const fila filas[] = {
        {"protege_fichero_UNICODE", true, sin_f, con_f,
         [] { return llama(lumodir_protege_fichero_UNICODE, "f.txt"); }, no_contesta},
        {"protege_fichero", false, sin_f, con_f, [] { return llama(lumodir_protege_fichero, "f.txt"); },
         no_contesta},
        {"crea_directorios_UNICODE", true, con_fichero_n, sin_n,
         [] { return llama(cdir_crea_directorios_UNICODE, "n", 1); }, 1},
        {"crea_directorios_si_es_posible_UNICODE", false, con_fichero_n, sin_n,
         [] { return llama(cdir_crea_directorios_si_es_posible_UNICODE, "n"); }, 1},
        {"espera_acceso_a_recursos_en_directorio", false, sin_v, nada,
         [] { return llama(lumodir_espera_acceso_a_recursos_en_directorio, "v"); }, 0},
        {"espera_acceso_a_recursos_en_directorio, it comes", false, sin_v, con_v,
         [] { return llama(lumodir_espera_acceso_a_recursos_en_directorio, "v"); }, 1},
        {"renombra_fichero_UNICODE", true, sin_f, con_f,
         [] { return llama(cdir_renombra_fichero_UNICODE, "f.txt", "n.txt"); }, no_contesta},
    };
    for (const fila& caso : filas) {
        buclrein_establece_politica(caso.con_pregunta ? 0 : 5, 10);
        siembra_operandos(b);
        const lista otro = estado(b);
        // Without anything in the way.
        siembra_operandos(a);
        caso.estorba(a);
        caso.remedia(a);
        ve_a(a.ruta_w());
        caso.haz();
        const lista esperado = estado(a);
        toma_preguntas();
        toma_esperas();

        a.limpia();
        siembra_operandos(a);
        caso.estorba(a);
        bool ya = false;
        unsigned preguntado = 0;
        const auto entretanto = [&] {
            if (!ya) {
                ya = true;
                caso.remedia(a);
                ve_a(b.ruta_w());
            }
        };
        contesta([&](const pregunta&) -> unsigned short {
            entretanto();
            return ++preguntado < 3 ? 1 : 0;
        });
        al_dormir([&](unsigned long) { entretanto(); });
        EXPECT_EQ(caso.haz(), caso.respuesta) << caso.nombre;
        EXPECT_TRUE(ya) << caso.nombre << ": nothing came between";
        EXPECT_EQ(estado(a), esperado) << caso.nombre;
        EXPECT_EQ(estado(b), otro) << caso.nombre << ": the other directory has changed";
        olvida_todo();
        ve_a(a.ruta_w().substr(0, 3));
        contesta(nullptr);
        al_dormir(nullptr);
        a.limpia();
        b.limpia();
    }
}

namespace {

struct vaiven {
    texto_w uno;
    texto_w otro;
    volatile LONG sigue = 1;
    volatile LONG veces = 0;
};
DWORD WINAPI va_y_viene(void* dato) {
    auto* v = static_cast<vaiven*>(dato);
    while (v->sigue != 0) {
        ::SetCurrentDirectoryW(v->otro.c_str());
        ::SetCurrentDirectoryW(v->uno.c_str());
        ::InterlockedIncrement(&v->veces);
    }
    return 0;
}

}  // namespace

// Another thread changes it all the time: whichever of the two directories was meant, the other one is untouched.
TEST(nombres_atados, otro_hilo_cambia_de_directorio_sin_cesar) {
    const directorio_temporal a;
    const directorio_temporal b;
    const directorio_actual_restaurado restaura;
    buclrein_establece_politica(0, 0);
    for (const operacion& op : todas()) {
        if (op.paths != 1) {
            continue;  // two texts may well mean two directories
        }
        siembra_operandos(a);
        const lista como_estaba = estado(a);
        ve_a(a.ruta_w());
        op.haz([](const std::string& r) { return r; });
        const lista esperado = estado(a);
        for (int ronda = 0; ronda < (a_fondo() ? 3 : 1); ++ronda) {
            ve_a(a.ruta_w().substr(0, 3));
            a.limpia();
            b.limpia();
            siembra_operandos(a);
            siembra_operandos(b);
            vaiven v = {a.ruta_w(), b.ruta_w()};
            ve_a(a.ruta_w());
            const HANDLE hilo = ::CreateThread(nullptr, 0, va_y_viene, &v, 0, nullptr);
            while (v.veces == 0) {
                ::Sleep(0);
            }
            op.haz([](const std::string& r) { return r; });
            v.sigue = 0;
            ::WaitForSingleObject(hilo, INFINITE);
            ::CloseHandle(hilo);
            const lista de_a = estado(a);
            const lista de_b = estado(b);
            EXPECT_TRUE((de_a == esperado && de_b == como_estaba) ||
                        (de_a == como_estaba && de_b == esperado))
                << op.nombre << ": both or neither, a " << testing::PrintToString(de_a) << " b "
                << testing::PrintToString(de_b);
            nada_que_decir(op.nombre);
            toma_esperas();
        }
        ve_a(a.ruta_w().substr(0, 3));
        a.limpia();
        b.limpia();
    }
}
