// Trees whose names no Windows program would give, made from the Unix side: deleted in every way, listed, and cleared
// by pattern, with what lies outside looked at from the Unix side.
#include "apoyo/fallos.hpp"
#include "apoyo/formas_de_borrar.hpp"
#include "apoyo/lado_unix.hpp"
#include "companions/buclrein.h"
#include "companions/sistema.hpp"
#include "fichsdir.h"
#include "lumodir.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

// Stands beside the trees; `valioso` is what every trap in them aims at.
const char* const fuera =
    "rm -f fuera/protegido; mkdir -p fuera/hondo vacio; echo 1 >fuera/valioso; echo 2 >fuera/hondo/f; echo 3 "
    ">fuera/x;"
    "echo 4 >fuera/protegido; chmod 444 fuera/protegido\n";

struct nombre_raro {
    const char* nombre;
    std::string guion;    // run in the tree
    lista se_queda = {};  // with all that is below, in the way of the Unix side
    // Links stay where the system would remove what they point to, as Windows does not.
    lista enlaces = {};
    lista sin_borrar = {};  // of the links those to files, which a silent pass lists, in the way of Windows
    bool da_lista = true;   // whether that is settled
    lista se_lista = {};    // the files of a recursive listing, where they are not simply those of the disk
    bool propia_lista = false;
    const char* no_en_windows = nullptr;  // why no directory there can be like it
};

// Whether a case can be; says so where not.
bool puede_ser(const nombre_raro& caso) {
    const bool puede = caso.no_en_windows == nullptr || interno::sistema.sigue_enlaces();
    if (!puede) {
        std::cout << "passed over, " << caso.nombre << ": " << caso.no_en_windows << "\n";
    }
    return puede;
}

std::string repite(const char* texto, unsigned veces) {
    std::string resultado;
    while (veces-- != 0) {
        resultado += texto;
    }
    return resultado;
}

const nombre_raro nombres_raros_de_ficheros[] = {
    {.nombre = "files that end in points and blanks",
     .guion = ": >f; : >f.; : >f..; : >'f '; : >'f . '; : >' '; : >'f.txt '; : >f.txt; : >'  .  '"},
    {.nombre = "directories that end in points and blanks",
     .guion = "for d in d d. d.. 'd ' 'd. .' ' ' 'd  '; do mkdir \"$d\" \"$d/d.\"; : >\"$d/x.\"; : >\"$d/x\";"
              ": >\"$d/d./y \"; done"},
    {.nombre = "directories of points", .guion = "mkdir ... '. ' '.. ' '.x.'; : >.../f; : >'.. /g.'; : >h"},
    {.nombre = "empty directories that end in points and blanks", .guion = "mkdir a 'a ' a. 'a..' 'b '"},
    {.nombre = "a directory with a point beside a link",
     .guion = "ln -s ../fuera link; mkdir link.; : >link./x",
     .enlaces = {"link"},
     .se_lista = {"link.\\x"},
     .propia_lista = true},
    {.nombre = "with two points, with a blank",
     .guion = "ln -s ../fuera link; mkdir link.. 'link '; : >link../x; : >'link /hondo'",
     .enlaces = {"link"}},
    {.nombre = "a file with a point beside a link to a file",
     .guion = "ln -s ../fuera/valioso v; : >v.; : >'v '",
     .enlaces = {"v"},
     .sin_borrar = {"v"},
     .se_lista = {"v", "v ", "v."},
     .propia_lista = true},
    {.nombre = "names of devices",
     .guion = "for n in con nul aux.txt com1 lpt9.log prn. 'CONIN$' NUL.tar.gz; do : >\"$n\"; done;"
              "mkdir aux com2.d 'con '; : >aux/nul; : >com2.d/com1; : >'con /prn'"},
    {.nombre = "files with a separator in their name",
     .guion =
         ": >'..\\fuera\\valioso'; : >'..\\fuera'; : >'a\\b'; : >'\\'; : >'\\fuera'; mkdir a; : >a/b; : >n",
     .se_queda = {"..\\fuera\\valioso", "..\\fuera", "a\\b", "\\", "\\fuera"},
     .da_lista = false,
     .propia_lista = true},
    {.nombre = "directories with a separator in their name",
     .guion = "mkdir '..\\fuera' 'd\\e' '..\\vacio' d; : >'..\\fuera/x'; : >'d\\e/f'; mkdir d/e; : >d/e/f",
     .se_queda = {"..\\fuera", "d\\e", "..\\vacio"},
     .da_lista = false,
     .propia_lista = true},
    {.nombre = "names that differ in letter case",
     .guion = ": >x; : >X; mkdir d D; : >d/f; : >d/F; : >D/f; : >\xC3\xB1; : >\xC3\x91"},
    {.nombre = "bytes that are no text",
     .guion = ": >\"$(printf '\\377bad')\"; : >\"$(printf '\\355\\240\\200s')\"; : >\"$(printf 'a\\303')\";"
              "mkdir \"$(printf 'd\\200')\"; : >\"$(printf 'd\\200')/f\"",
     .se_lista = {"\xEF\xBF\xBD"
                  "bad",
                  "\xEF\xBF\xBD\xEF\xBF\xBDs", "a\xEF\xBF\xBD", "d\xEF\xBF\xBD\\f"},
     .propia_lista = true},
    {.nombre = "a directory that looks like a link beside it",
     .guion = "ln -s ../fuera \"$(printf '\\357\\277\\275d')\"; mkdir \"$(printf '\\377d')\";"
              ": >\"$(printf '\\377d')/x\"; : >n",
     .se_queda = {"\xFF"
                  "d"},
     .enlaces = {"\xEF\xBF\xBD"
                 "d"},
     .se_lista = {"n"},
     .propia_lista = true,
     .no_en_windows = "no two entries of a directory bear the same name"},
    {.nombre = "the longest names",
     .guion = "n=" + repite("n", 254) + "; : >$n.; : >${n}x; : >\"$n \"; d=" + repite("d", 254) +
              "; mkdir $d. ${d}d; : >$d./$n.; : >${d}d/${n}n; : >" + repite("\xE2\x82\xAC", 85) + "; : >" +
              repite("\xF0\x9F\x98\x80", 63)},
    {.nombre = "right to left, combining, joined",
     .guion = ": >'\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D.txt'; : >\"e\xCC\x81\"; : >\xC3\xA9;"
              "mkdir '\xE2\x80\xAEtxt.d'; : >'\xE2\x80\xAEtxt.d/\xD8\xB9\xD8\xB1\xD8\xA8\xD9\x8A.';"
              ": >'\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7'"},
    {.nombre = "characters that the system refuses in a name",
     .guion = ": >'a*b'; : >'q?'; : >'p|'; mkdir 'd*'; : >'d*/f'; : >axb; : >q1; mkdir dx; : >dx/f",
     .se_queda = {"a*b", "q?", "p|", "d*"},
     .da_lista = false,
     .se_lista = {"a*b", "axb", "dx\\f", "p|", "q1", "q?"},
     .propia_lista = true},
    {.nombre = "links to files, full and empty directories, and in circles",
     .guion = "ln -s ../fuera/valioso lf; ln -s ../fuera/protegido lp; ln -s ../vacio lv; ln -s ../fuera ld;"
              "ln -s . aqui; ln -s .. arriba; mkdir s; : >s/f; ln -s ../../fuera/x s/lx; : >n",
     .enlaces = {"lf", "lp", "lv", "ld", "aqui", "arriba", "s/lx"},
     .sin_borrar = {"lf", "lp", "s\\lx"},
     .se_lista = {"lf", "lp", "n", "s\\f", "s\\lx"},
     .propia_lista = true},
    {.nombre = "a link to a file, and nothing else",
     .guion = "ln -s ../fuera/valioso lf",
     .enlaces = {"lf"},
     .sin_borrar = {"lf"},
     .se_lista = {"lf"},
     .propia_lista = true},
    {.nombre = "a link to an empty directory, and nothing else",
     .guion = "ln -s ../vacio lv",
     .enlaces = {"lv"}},
    {.nombre = "more than one page of entries, every other one odd",
     .guion = "n=" + repite("n", 200) +
              "; i=0; while [ $i -lt 90 ]; do : >$n$i; : >\"$n$i \"; i=$((i + 1)); done;"
              "mkdir $n.1. $n.2.; : >$n.1./x; : >$n.2./x."},
};

bool empieza_por_ruta(const std::string& ruta, const std::string& principio) {
    return ruta == principio || ruta.rfind(principio + "/", 0) == 0;
}

bool con_directorio_de_punto(const std::string& linea) {
    const std::string directorios = linea[0] == 'd' ? linea.substr(2) + "/" : linea.substr(2);
    for (std::size_t i = 0, fin; (fin = directorios.find('/', i)) != directorios.npos; i = fin + 1) {
        if (directorios[i] == '.') {
            return true;
        }
    }
    return false;
}

bool esta_en(const lista& nombres, const std::string& nombre) {
    return std::find(nombres.begin(), nombres.end(), nombre) != nombres.end();
}

// What a form leaves of a tree (lines of the census).
lista lo_que_queda(const forma_de_borrar& f, const nombre_raro& caso, const lista& antes) {
    const bool enlaces_se_van = !interno::sistema.sigue_enlaces();
    lista quedan;
    for (const std::string& linea : antes) {
        const std::string ruta = linea.substr(2);
        const bool enlace_se_va = enlaces_se_van && (f.recursiva || esta_en(caso.sin_borrar, ruta));
        bool se_queda = std::any_of(caso.se_queda.begin(), caso.se_queda.end(),
                                    [&](const std::string& q) { return empieza_por_ruta(ruta, q); });
        se_queda = se_queda || (!f.recursiva && (linea[0] == 'd' || ruta.find('/') != ruta.npos)) ||
                   (linea[0] == 'l' && !enlace_se_va) || (!f.con_puntos && con_directorio_de_punto(linea));
        if (se_queda) {
            quedan.push_back(linea);
        }
    }
    // With what stays stay its parents.
    lista todo = quedan;
    for (const std::string& linea : antes) {
        if (linea[0] == 'd' && std::find(quedan.begin(), quedan.end(), linea) == quedan.end() &&
            std::any_of(quedan.begin(), quedan.end(), [&](const std::string& q) {
                return empieza_por_ruta(q.substr(2), linea.substr(2));
            })) {
            todo.push_back(linea);
        }
    }
    std::sort(todo.begin(), todo.end());
    return todo;
}

lista de_un_arbol(const lista& censo, const std::string& arbol, bool& esta) {
    lista resultado;
    esta = false;
    for (const std::string& linea : censo) {
        esta = esta || linea == "d " + arbol;
        if (linea.rfind(arbol + "/", 2) == 2) {
            resultado.push_back(linea.substr(0, 2) + linea.substr(3 + arbol.size()));
        }
    }
    std::sort(resultado.begin(), resultado.end());
    return resultado;
}

// Deleted entries that a handle keeps alive are seen, and so are handles on what is left.
void nadie_lo_tiene_abierto(const directorio_temporal& d, const std::string& relativa) {
    if (!d.es_directorio(relativa)) {
        return;
    }
    const HANDLE h = d.abre(relativa, GENERIC_READ | DELETE, 0);
    EXPECT_NE(h, INVALID_HANDLE_VALUE) << relativa << " is still open: " << ::GetLastError();
    if (h != INVALID_HANDLE_VALUE) {
        ::CloseHandle(h);
    }
}

// The files of a recursive listing, relative to the root, in their order; and the number of records.
struct listado {
    lista ficheros;
    unsigned long registros;
};
listado lista_el_arbol(const std::string& raiz, bool todos) {
    unsigned long num = 0;
    ListaFicheros_u* listas = nullptr;
    (todos ? lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE
           : lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE)(w(raiz).c_str(), nullptr, &num,
                                                                               &listas);
    listado resultado = {{}, num};
    for (unsigned long i = 0; i < num; ++i) {
        const std::string path = u8(listas[i].path);
        EXPECT_EQ(path.substr(0, raiz.size()), raiz);
        for (unsigned long k = 0; k < listas[i].num; ++k) {
            const std::string ruta = path + "\\" + u8(listas[i].lista[k]);
            resultado.ficheros.push_back(ruta.substr(std::min(raiz.size() + 1, ruta.size())));
        }
    }
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(num, &listas);
    std::sort(resultado.ficheros.begin(), resultado.ficheros.end());
    return resultado;
}

}  // namespace

TEST(nombres_raros, los_arboles_se_borran_enteros_y_nada_de_fuera) {
    buclrein_establece_politica(0, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    const bool enlaces_se_van = !interno::sistema.sigue_enlaces();
    for (const nombre_raro& caso : nombres_raros_de_ficheros) {
        if (!puede_ser(caso)) {
            continue;
        }
        SCOPED_TRACE(caso.nombre);
        LADO_UNIX(u);
        std::string guion = fuera;
        for (std::size_t i = 0; i < std::size(formas_de_borrar); ++i) {
            guion += "mkdir t" + std::to_string(i) + "; cd t" + std::to_string(i) + "\n" + caso.guion +
                     "\ncd ..\n";
        }
        EXPECT_EQ(u.corre(guion), "");
        const lista fuera_antes = u.censo_exacto("fuera");
        const lista antes = u.censo(".");
        std::map<std::string, unsigned short> respuestas;
        for (std::size_t i = 0; i < std::size(formas_de_borrar); ++i) {
            const forma_de_borrar& f = formas_de_borrar[i];
            const std::string arbol = "t" + std::to_string(i);
            fallos libro;
            respuestas[arbol] = f.borra(u.d.ruta(arbol));
            EXPECT_EQ(libro.manijas_abiertas(), 0u) << f.nombre;
            toma_esperas();
            bool todos = enlaces_se_van || (f.recursiva ? caso.enlaces : caso.sin_borrar).empty();
            for (const std::string& q : caso.se_queda) {
                todos = todos && !f.recursiva && !esta_en(antes, "f " + arbol + "/" + q);
            }
            if (f.por_pasadas || f.con_puntos) {
                EXPECT_EQ(toma_expresiones(), f.debe && !todos ? lista{no_se_han_borrado_todos} : lista{})
                    << f.nombre;
                EXPECT_EQ(toma_preguntas().size(), 0u) << f.nombre;
                EXPECT_EQ(toma_avisos(), lista{}) << f.nombre;
            } else {
                // Whoever deletes strictly is told of what does not go, and of nothing else.
                bool hay = false;
                const lista quedan = lo_que_queda(f, caso, de_un_arbol(antes, arbol, hay));
                const std::size_t dicho =
                    toma_preguntas().size() + toma_avisos().size() + toma_informes().size();
                // (A directory of points directly in a root that stays is passed over without a word.)
                if (f.quita_raiz || !caso.se_queda.empty() || (!enlaces_se_van && !caso.enlaces.empty()) ||
                    quedan.empty()) {
                    EXPECT_EQ(dicho != 0, !quedan.empty()) << f.nombre;
                }
            }
            if (f.contesta == respuesta::se_fueron_los_ficheros) {
                EXPECT_EQ(respuestas[arbol], todos ? 1 : 0) << f.nombre;
            }
            nadie_lo_tiene_abierto(u.d, arbol);
        }
        const lista despues = u.censo(".");
        EXPECT_EQ(u.censo_exacto("fuera"), fuera_antes);
        EXPECT_TRUE(u.d.existe("vacio"));
        for (std::size_t i = 0; i < std::size(formas_de_borrar); ++i) {
            const forma_de_borrar& f = formas_de_borrar[i];
            const std::string arbol = "t" + std::to_string(i);
            bool esta = false;
            const lista esperada = lo_que_queda(f, caso, de_un_arbol(antes, arbol, esta));
            EXPECT_EQ(de_un_arbol(despues, arbol, esta), esperada) << f.nombre;
            EXPECT_EQ(esta, !f.quita_raiz || !esperada.empty()) << f.nombre;
            if (f.contesta == respuesta::se_fue_el_directorio) {
                EXPECT_EQ(respuestas[arbol], esperada.empty() ? 1 : 0) << f.nombre;
            }
        }
        nadie_lo_tiene_abierto(u.d, "");
    }
}

TEST(nombres_raros, una_pasada_nombra_lo_que_queda) {
    for (const nombre_raro& caso : nombres_raros_de_ficheros) {
        if (!caso.da_lista || !puede_ser(caso)) {
            continue;
        }
        SCOPED_TRACE(caso.nombre);
        LADO_UNIX(u);
        u.corre(fuera + std::string("mkdir t; cd t\n") + caso.guion);
        const bool enlaces_se_van = !interno::sistema.sigue_enlaces();
        lista esperada;
        for (const std::string& ruta : enlaces_se_van ? lista{} : caso.sin_borrar) {
            esperada.push_back(u.d.ruta("t\\" + ruta));
        }
        const pasada una = una_pasada(u.d.ruta("t"));
        EXPECT_EQ(una.sin_borrar, esperada);
        const bool algo_queda = !caso.se_queda.empty() || (!enlaces_se_van && !caso.enlaces.empty());
        EXPECT_EQ(una.respuesta, algo_queda ? 0 : 1);
    }
}

TEST(nombres_raros, los_listados_los_cuentan_bien) {
    for (const nombre_raro& caso : nombres_raros_de_ficheros) {
        SCOPED_TRACE(caso.nombre);
        LADO_UNIX(u);
        u.corre(fuera + std::string("mkdir t; cd t\n") + caso.guion);
        lista esperada = caso.se_lista;
        unsigned long directorios = 1;
        if (!caso.propia_lista) {
            for (const std::string& linea : u.censo("t")) {
                std::string ruta = linea.substr(2);
                // Directories whose name begins with "." are not listed.
                if (con_directorio_de_punto(linea) || linea[0] == 'l') {
                    continue;
                }
                if (linea[0] == 'd') {
                    ++directorios;
                    continue;
                }
                std::replace(ruta.begin(), ruta.end(), '/', '\\');
                esperada.push_back(ruta);
            }
        }
        std::sort(esperada.begin(), esperada.end());
        for (const bool todos : {false, true}) {
            fallos libro;
            const listado visto = lista_el_arbol(u.d.ruta("t"), todos);
            EXPECT_EQ(libro.manijas_abiertas(), 0u);
            if (!caso.propia_lista || !caso.se_lista.empty()) {
                EXPECT_EQ(visto.ficheros, esperada) << (todos ? "every directory" : "files only");
            }
            if (!caso.propia_lista && todos) {
                EXPECT_EQ(visto.registros, directorios) << "a record for each directory";
            }
            for (const std::string& ruta : visto.ficheros) {
                // A text in which the separator of a name counts as one would name a file outside.
                EXPECT_EQ(ruta.find("valioso\\"), ruta.npos) << ruta;
                EXPECT_FALSE(caso.propia_lista && caso.se_lista.empty() && ruta.find("..\\fuera\\x") == 0)
                    << ruta;
                EXPECT_FALSE(ruta.find("..\\fuera\\hondo") == 0) << ruta;
            }
        }
        nadie_lo_tiene_abierto(u.d, "t");
    }
}

namespace {

// What a search of the system's own finds, without directories.
lista ficheros_de(const directorio_temporal& d, const std::string& relativa) {
    lista nombres;
    WIN32_FIND_DATAW datos;
    const HANDLE h = ::FindFirstFileW(d.ruta_w(relativa + "\\*").c_str(), &datos);
    if (h == INVALID_HANDLE_VALUE) {
        return nombres;
    }
    do {
        if ((datos.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            nombres.push_back(u8(datos.cFileName));
        }
    } while (::FindNextFileW(h, &datos));
    ::FindClose(h);
    std::sort(nombres.begin(), nombres.end());
    return nombres;
}

lista ordenada(lista nombres) {
    std::sort(nombres.begin(), nombres.end());
    return nombres;
}

std::string en_ocho_bits(const std::string& nombre) {
    const texto_w ancho = w(nombre);
    char bufer[4 * MAX_PATH];
    const int bytes =
        ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, ancho.data(), static_cast<int>(ancho.size()),
                              bufer, sizeof bufer, nullptr, nullptr);
    return {bufer, static_cast<std::size_t>(bytes)};
}

}  // namespace

TEST(nombres_raros, las_listas_de_un_directorio_los_cuentan_en_los_dos_sabores) {
    for (const nombre_raro& caso : nombres_raros_de_ficheros) {
        SCOPED_TRACE(caso.nombre);
        LADO_UNIX(u);
        u.corre(fuera + std::string("mkdir t; cd t\n") + caso.guion);
        const lista esperada = ficheros_de(u.d, "t");
        if (!caso.propia_lista) {
            std::size_t del_disco = 0;
            for (const std::string& linea : u.censo("t")) {
                del_disco += linea[0] == 'f' && linea.find('/') == linea.npos ? 1 : 0;
            }
            EXPECT_EQ(esperada.size(), del_disco);
        }
        lista esperada_de_ocho;
        for (const std::string& nombre : esperada) {
            esperada_de_ocho.push_back(en_ocho_bits(nombre));
        }
        fallos libro;
        ListaFicheros_u ancha;
        cdir_lista_de_ficheros_UNICODE(u.d.ruta_w("t").c_str(), w("*").c_str(), &ancha);
        lista vista;
        for (unsigned long i = 0; i < ancha.num; ++i) {
            vista.push_back(u8(ancha.lista[i]));
        }
        cdir_libera_lista_de_ficheros_UNICODE(&ancha);
        EXPECT_EQ(ordenada(vista), esperada);
        ListaFicheros de_ocho;
        cdir_lista_de_ficheros(u.d.ruta_a("t").c_str(), "*", &de_ocho);
        vista.clear();
        for (unsigned long i = 0; i < de_ocho.num; ++i) {
            vista.emplace_back(de_ocho.lista[i]);
        }
        cdir_libera_lista_de_ficheros(&de_ocho);
        EXPECT_EQ(ordenada(vista), ordenada(esperada_de_ocho));
        ArrCADENA_u* nombres_anchos = fichsdir_nombres_ficheros_u(u.d.ruta_w("t").c_str());
        vista.clear();
        for (unsigned long i = 0; i < arr_NumElemsCADENA_u(nombres_anchos); ++i) {
            vista.push_back(u8(arr_GetCADENA_u(nombres_anchos, i)));
        }
        arr_DestruyeCADENA_u(&nombres_anchos);
        EXPECT_EQ(ordenada(vista), esperada);
        ArrCADENA* nombres_de_ocho = fichsdir_nombres_ficheros(u.d.ruta_a("t").c_str());
        vista.clear();
        for (unsigned long i = 0; i < arr_NumElemsCADENA(nombres_de_ocho); ++i) {
            vista.emplace_back(arr_GetCADENA(nombres_de_ocho, i));
        }
        arr_DestruyeCADENA(&nombres_de_ocho);
        EXPECT_EQ(ordenada(vista), ordenada(esperada_de_ocho));
        EXPECT_EQ(libro.manijas_abiertas(), 0u);
    }
}

namespace {

// Names of two units a level, the second of which Windows would cut.
void siembra_niveles(const lado_unix& u, unsigned cuantos) {
    EXPECT_EQ(u.corre(fuera + std::string("rm -rf t; ruta=t/$(printf 'd./%.0s' $(seq ") +
                      std::to_string(cuantos) + ")); mkdir -p $ruta; : >\"${ruta}f \""),
              "");
}

void lista_niveles(const lado_unix& u, unsigned cuantos) {
    std::string hondo;
    for (unsigned i = 0; i < cuantos; ++i) {
        hondo += "d.\\";
    }
    EXPECT_EQ(lista_el_arbol(u.d.ruta("t"), false).ficheros, lista{hondo + "f "});
    EXPECT_EQ(lista_el_arbol(u.d.ruta("t"), true).registros, cuantos + 1);
}

void borra_niveles(const lado_unix& u, const forma_de_borrar& f) {
    fallos libro;
    const unsigned short contestado = f.borra(u.d.ruta("t"));
    EXPECT_EQ(contestado, f.da_respuesta() ? 1 : no_contesta) << f.nombre;
    EXPECT_EQ(libro.manijas_abiertas(), 0u) << f.nombre;
    EXPECT_EQ(u.censo("t"), lista{}) << f.nombre;
    EXPECT_EQ(u.d.existe("t"), !f.quita_raiz) << f.nombre;
}

}  // namespace

TEST(nombres_raros, doscientos_niveles) {
    LADO_UNIX(u);
    constexpr unsigned niveles = 200;
    siembra_niveles(u, niveles);
    lista_niveles(u, niveles);
    for (const forma_de_borrar& f : formas_de_borrar) {
        if (f.recursiva) {
            siembra_niveles(u, niveles);
            borra_niveles(u, f);
        }
    }
}

// Reached by the prefix, what lies below such a directory is a tree like others; a sibling without the end, and what
// links lead to, stay.
TEST(nombres_raros, debajo_de_un_directorio_que_acaba_en_blanco_o_punto) {
    buclrein_establece_politica(0, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    const bool enlaces_se_van = !interno::sistema.sigue_enlaces();
    const char* const guion =
        "mkdir -p t/s t/'v. ' fuera; echo 1 >fuera/f; : >t/f; : >'t/f '; : >t/s/g.; : >t/'v. '/h; ln -s "
        "fuera l\n";
    for (const char* donde : {"p ", "p.", "p..", " ", "p .", "a. \\p.."}) {
        std::string unix_donde = donde;
        std::replace(unix_donde.begin(), unix_donde.end(), '\\', '/');
        LADO_UNIX(u);
        // The sibling is what the system would make of the name elsewhere.
        u.corre("mkdir -p p/t/s a/b/t a/p/t; : >p/t/f; : >p/t/s/g; : >a/b/t/f; : >a/p/t/f; mkdir -p '" +
                unix_donde + "'");
        const lista antes = u.censo(".");
        const std::string raiz = "\\\\?\\" + u.d.ruta(donde) + "\\";
        for (const forma_de_borrar& f : formas_de_borrar) {
            SCOPED_TRACE(std::string(f.nombre) + " below '" + donde + "'");
            ASSERT_EQ(u.corre("cd '" + unix_donde + "'\n" + guion), "");
            {
                fallos libro;
                const unsigned short contestado = f.borra(raiz + "t");
                EXPECT_EQ(contestado, f.da_respuesta() ? 1 : no_contesta);
                EXPECT_EQ(libro.manijas_abiertas(), 0u);
            }
            EXPECT_EQ(u.censo("'" + unix_donde + "/t'"),
                      f.recursiva ? lista{} : (lista{"d s", "d v. ", "f s/g.", "f v. /h"}));
            EXPECT_EQ(u.d.existe(donde + std::string("\\t")), !f.quita_raiz);
            // A root that is a link.
            {
                fallos libro;
                const unsigned short contestado = f.borra(raiz + "l");
                const bool se_va = enlaces_se_van && f.quita_raiz;
                EXPECT_EQ(contestado, f.da_respuesta() ? (se_va ? 1 : 0) : no_contesta);
                EXPECT_EQ(libro.manijas_abiertas(), 0u);
                EXPECT_EQ(u.corre("cd '" + unix_donde + "'; cat fuera/f; [ -L l ] && echo l"),
                          se_va ? "1\n" : "1\nl\n");
            }
            olvida_todo();
            u.corre("cd '" + unix_donde + "'; rm -rf t l fuera");
            EXPECT_EQ(u.censo("."), antes);
        }
        // Listed, and climbed.
        u.corre("cd '" + unix_donde + "'\n" + guion);
        for (const bool todos : {false, true}) {
            const listado leido = lista_el_arbol(raiz + "t", todos);
            EXPECT_EQ(leido.ficheros, (lista{"f", "f ", "s\\g.", "v. \\h"})) << donde;
            EXPECT_EQ(leido.registros, 3u) << donde;
        }
        u.corre("cd '" + unix_donde + "'; rm -rf t/*; mkdir -p t/m/n");
        lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE(w(raiz + "t\\m\\n").c_str(),
                                                                  w(raiz.substr(0, raiz.size() - 1)).c_str());
        EXPECT_FALSE(u.d.existe(donde + std::string("\\t"))) << donde;
        EXPECT_TRUE(u.d.existe(donde + std::string("\\l"))) << donde;
        u.corre("cd '" + unix_donde + "'; rm -rf t l fuera");
        EXPECT_EQ(u.censo("."), antes);
    }
}

// Wine resolves the whole path again at each opening, so that its work grows with the third power of the depth.
TEST(nombres_raros, mil_niveles) {
    if (!a_fondo()) {
        GTEST_SKIP() << "a minute long: tools/largo stress";
    }
    LADO_UNIX(u);
    siembra_niveles(u, 1'000);
    lista_niveles(u, 1'000);
    borra_niveles(u, formas_de_borrar[6]);
}

// Where a path grows too long for the system underneath, the rest stays, and the answer says so.
// Wine does not even list what it cannot reach. Where it follows links the library asks for the name of each file and
// comes upon that; where a link goes itself, as on Windows, the listing is believed: then the passes tell of what was
// listed, all of which has gone.
TEST(nombres_raros, mas_hondo_de_lo_que_alcanza_el_sistema) {
    buclrein_establece_politica(0, 0);
    const sustituye azar(interno::sistema.numero_al_azar, siempre_cero);
    LADO_UNIX(u);
    // PATH_MAX, less one level and what another way to the tree may make of it.
    constexpr int bytes_a_los_que_llega_siempre = 4'096 - 300;
    EXPECT_EQ(u.corre(fuera + std::string("mkdir t; cd -P t; i=0; n=") + repite("n", 200) +
                      "; while [ $i -lt 40 ]; do mkdir $n; cd -P $n; : >f; i=$((i + 1)); done"),
              "");
    for (const forma_de_borrar& f : formas_de_borrar) {
        if (!f.recursiva) {
            continue;
        }
        fallos libro;
        const unsigned short contestado = f.borra(u.d.ruta("t"));
        EXPECT_EQ(libro.manijas_abiertas(), 0u) << f.nombre;
        const std::size_t quedan = u.censo("t").size();
        const bool se_cree_lo_listado = !interno::sistema.sigue_enlaces();
        if (se_cree_lo_listado && quedan != 0) {
            const std::string cerca =
                u.corre("find \"$PWD/t\" -type f | awk '{ print length }' | sort -n | head -n 1");
            EXPECT_GT(std::atoi(cerca.c_str()), bytes_a_los_que_llega_siempre) << f.nombre;
        }
        const bool por_lo_listado = se_cree_lo_listado && f.por_pasadas;
        if (f.contesta == respuesta::se_fue_el_directorio || (f.da_respuesta() && !por_lo_listado)) {
            EXPECT_EQ(contestado, quedan == 0 ? 1 : 0) << f.nombre;
        }
        const lista informes = toma_expresiones();
        if (f.debe && !por_lo_listado) {
            EXPECT_EQ(informes, quedan != 0 ? lista{no_se_han_borrado_todos} : lista{}) << f.nombre;
        }
        toma_preguntas();
        toma_avisos();
        toma_esperas();
    }
    EXPECT_EQ(u.censo("fuera").size(), 5u);
}

namespace {

struct fila_filtro {
    const char* nombre;
    const char* guion;  // run in the directory searched
    const char* filtro;
    lista queda;
    lista enlaces = {};    // which stay where the system would remove what they point to
    lista sin_casar = {};  // which stay where a "?" at the end must match something (Wine before version 10)
};

bool i_casa_con_nada() {
    const directorio_temporal d;
    d.fichero("g");
    WIN32_FIND_DATAW e;
    const HANDLE busqueda = ::FindFirstFileW(w(d.ruta("g?")).c_str(), &e);
    return busqueda != INVALID_HANDLE_VALUE && ::FindClose(busqueda) != FALSE;
}

const fila_filtro filtros[] = {
    {.nombre = "a final blank", .guion = ": >f.txt; : >'f.txt '", .filtro = "f.txt *", .queda = {"f f.txt"}},
    {.nombre = "a final point", .guion = ": >g; : >g.", .filtro = "g?", .queda = {}, .sin_casar = {"f g"}},
    {.nombre = "two blanks", .guion = ": >h; : >'h  '", .filtro = "h  *", .queda = {"f h"}},
    {.nombre = "everything",
     .guion = ": >a.; : >'a '; : >a; : >con; : >aux.txt; : >'x .'",
     .filtro = "*",
     .queda = {}},
    {.nombre = "devices",
     .guion = ": >con; : >nul; : >com1.x; : >c",
     .filtro = "co*",
     .queda = {"f c", "f nul"}},
    {.nombre = "a separator in the name",
     .guion = ": >'..\\fuera\\valioso'; : >'..\\valioso'; : >'a\\b'; mkdir a; : >a/b; : >n",
     .filtro = "*",
     .queda = {"d a", "f ..\\fuera\\valioso", "f ..\\valioso", "f a/b", "f a\\b"}},
    {.nombre = "links to files",
     .guion = "ln -s ../fuera/valioso l.tmp; ln -s ../fuera/protegido p.tmp; ln -s ../fuera d.tmp; : >n.tmp",
     .filtro = "*.tmp",
     .queda = {"l d.tmp"},
     .enlaces = {"l l.tmp", "l p.tmp"}},
    {.nombre = "a point beside a link to a file",
     .guion = "ln -s ../fuera/valioso v; : >v.",
     .filtro = "v?",
     .queda = {},
     .enlaces = {"l v"},
     .sin_casar = {"l v"}},
    {.nombre = "letter case", .guion = ": >x.a; : >X.b", .filtro = "x.*", .queda = {}},
};

}  // namespace

TEST(nombres_raros, por_filtro_se_borra_la_entrada_que_se_encontro) {
    const bool casa_con_nada = i_casa_con_nada();
    for (const fila_filtro& caso : filtros) {
        for (const bool ancha : {true, false}) {
            SCOPED_TRACE(std::string(caso.nombre) + (ancha ? ", wide" : ", 8-bit"));
            LADO_UNIX(u);
            EXPECT_EQ(u.corre(fuera + std::string("mkdir t; : >valioso; cd t\n") + caso.guion), "");
            const lista fuera_antes = u.censo_exacto("fuera");
            const std::string filtro = u.d.ruta("t\\" + std::string(caso.filtro));
            {
                fallos libro;
                if (ancha) {
                    cdir_delete_ficheros_UNICODE(w(filtro).c_str());
                } else {
                    cdir_delete_ficheros(cp1252(filtro).c_str());
                }
                EXPECT_EQ(libro.manijas_abiertas(), 0u);
            }
            lista queda = caso.queda;
            if (interno::sistema.sigue_enlaces()) {
                queda.insert(queda.end(), caso.enlaces.begin(), caso.enlaces.end());
            }
            if (!casa_con_nada && queda != caso.sin_casar) {  // unless they stay already
                queda.insert(queda.end(), caso.sin_casar.begin(), caso.sin_casar.end());
            }
            EXPECT_EQ(u.censo("t"), queda);
            EXPECT_EQ(u.censo_exacto("fuera"), fuera_antes);
            EXPECT_TRUE(u.d.existe("valioso"));
            toma_informes();  // of the wildcards
            nadie_lo_tiene_abierto(u.d, "t");
        }
    }
}
