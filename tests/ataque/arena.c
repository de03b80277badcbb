/*
 * The attack on the walks of the library: makes a tree and, outside it, sentinels; lets the victim (victima.cpp, a
 * Windows program that calls the library) delete or list the tree while somebody swaps directories of it for links
 * that lead to the sentinels; and counts what is lost or listed outside. tools/attack builds and runs it:
 *
 *     arena ARENA UNIX-ROUNDS WINDOWS-ROUNDS VICTIM-COMMAND INTRUDER-COMMAND [RESULTS.xml]
 *
 * Two attackers take turns: a Unix process here (renameat2 exchanges a directory and a link in one step, as fast as it
 * can, at four depths; and files and links to files), and the intruder (intruso.cpp, a Windows program that moves a
 * directory away and a decoy full of links into its place).
 *
 * Each directory outside bears the names of the directory it stands for, so that a text composed in one of them names
 * a file in the other; and one name more, the sentinel's, which only a listing through a link can show.
 * The attacker never reaches through a link itself: it works on directories held open.
 */
#define _GNU_SOURCE
#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <ftw.h>
#include <poll.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

enum { ramas = 4, hojas = 4, cadenas = 16, eslabones = 6, en_raiz = 40, max_parejas = 200 };

/* How long an attack goes on; then the tree is put in order, so that passes with pauses come to their end. */
enum { ataque_ms = 500, paciencia_ms = 60000 };

struct funcion {
    const char *nombre;
    int sube;      /* works on chains of empty directories */
    int solo_raiz; /* does not go down */
};

/* In the order of the table of victima.cpp. */
static const struct funcion funciones[] = {
    {"cdir_borra_contenido_directorio_UNICODE", 0, 0},
    {"cdir_borra_directorio_y_subdirectorios_UNICODE", 0, 0},
    {"cdir_borra_directorio_y_subdirectorios_parando", 0, 0},
    {"cdir_borra_contenido_directorio_reintentando_u", 0, 1},
    {"cdir_borra_contenido_directorio_si_es_posible_reintentando_u", 0, 0},
    {"cdir_borra_directorio_y_subdirectorios_reintentando_u", 0, 0},
    {"cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE", 0, 0},
    {"lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE", 1, 0},
    {"lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE", 0, 0},
    {"lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE", 0, 0},
};
enum { num_funciones = sizeof funciones / sizeof funciones[0] };

static char base[3000];

static void acaba(const char *formato, ...) {
    va_list argumentos;
    va_start(argumentos, formato);
    vfprintf(stderr, formato, argumentos);
    va_end(argumentos);
    fprintf(stderr, "\n");
    exit(2);
}

/* Good for the next few dozen calls. */
static char *texto(const char *formato, ...) {
    static char sitio[64][4096];
    static unsigned cual;
    va_list argumentos;
    va_start(argumentos, formato);
    cual = (cual + 1) % 64;
    vsnprintf(sitio[cual], sizeof sitio[cual], formato, argumentos);
    va_end(argumentos);
    return sitio[cual];
}

static void directorio(const char *ruta) {
    if (mkdir(ruta, 0755) != 0) {
        acaba("no directory %s: %s", ruta, strerror(errno));
    }
}

/* Every fifth is read-only: deleting it takes the longer way. */
static void fichero(const char *ruta, unsigned numero) {
    const int d = open(ruta, O_CREAT | O_WRONLY | O_EXCL, numero % 5 == 4 ? 0444 : 0644);
    if (d < 0) {
        acaba("no file %s: %s", ruta, strerror(errno));
    }
    close(d);
}

static void enlace(const char *ruta, const char *destino) {
    if (symlink(texto("%s/%s", base, destino), ruta) != 0) {
        acaba("no link %s: %s", ruta, strerror(errno));
    }
}

/* A directory of the tree with all below: level 0 is the root, 3 the deepest. */
static void rama(const char *donde, int nivel, int centinelas) {
    char ruta[4096];
    snprintf(ruta, sizeof ruta, "%s", donde);
    directorio(ruta);
    const unsigned ficheros = nivel == 0 ? en_raiz : nivel == 1 ? 8 : 4;
    for (unsigned i = 0; i < ficheros; ++i) {
        fichero(texto("%s/f%u", ruta, i), i);
    }
    if (centinelas) {
        fichero(texto("%s/centinela", ruta), 0);
    }
    if (nivel == 0) {
        for (int i = 0; i < ramas; ++i) {
            rama(texto("%s/d%d", ruta, i), 1, centinelas);
        }
    } else if (nivel == 1) {
        for (int i = 0; i < hojas; ++i) {
            rama(texto("%s/e%d", ruta, i), 2, centinelas);
        }
    } else if (nivel == 2) {
        rama(texto("%s/g", ruta), 3, centinelas);
    }
}

/* An empty chain, from link number `desde` on. */
static void cadena(const char *ruta, int desde) {
    char *hasta = texto("%s", ruta);
    directorio(hasta);
    for (int i = desde; i < eslabones; ++i) {
        hasta = texto("%s/c%d", hasta, i);
        directorio(hasta);
    }
}

static int quita(const char *ruta, const struct stat *s, int tipo, struct FTW *f) {
    (void)s, (void)tipo, (void)f;
    return remove(ruta) != 0 && errno != ENOENT;
}
static void arrasa(const char *ruta) {
    struct stat s;
    for (int i = 0; i < 100 && lstat(ruta, &s) == 0; ++i) {
        nftw(ruta, quita, 16, FTW_DEPTH | FTW_PHYS);
    }
    if (lstat(ruta, &s) == 0) {
        acaba("%s cannot be cleared", ruta);
    }
}

/* The sentinels as they must be, and as they are: files and directories of the mode that they were given. */
static long g_censo;
static int cuenta(const char *ruta, const struct stat *s, int tipo, struct FTW *f) {
    (void)f;
    const char *nombre = strrchr(ruta, '/') + 1;
    const unsigned quinto = nombre[0] == 'f' && atoi(nombre + 1) % 5 == 4;
    g_censo += tipo == FTW_D || (tipo == FTW_F && (s->st_mode & 0777) == (quinto ? 0444 : 0644));
    return 0;
}
static long censo(void) {
    g_censo = 0;
    nftw("./fuera", cuenta, 16, FTW_PHYS);
    return g_censo;
}

static long siembra_fuera(int sube) {
    arrasa("fuera");
    directorio("fuera");
    if (sube) {
        for (int k = 0; k < cadenas; ++k) {
            for (int c = 0; c < eslabones; ++c) {
                cadena(texto("fuera/v%d_%d", k, c), c + 1);
            }
        }
    } else {
        rama("fuera/m0", 0, 1);
        for (int d = 0; d < ramas; ++d) {
            rama(texto("fuera/m1_%d", d), 1, 1);
            for (int e = 0; e < hojas; ++e) {
                rama(texto("fuera/m2_%d_%d", d, e), 2, 1);
                rama(texto("fuera/m3_%d_%d", d, e), 3, 1);
            }
        }
    }
    return censo();
}

/* A directory of the tree, by its parent held open, and the link that changes places with it. */
struct pareja {
    int padre;
    char nombre[16];
    char aparte[32];
};
static struct pareja parejas[max_parejas];
static int num_parejas;
static int aparte = -1;

static void pareja(const char *padre, const char *nombre, const char *destino) {
    struct pareja *p = &parejas[num_parejas];
    if (num_parejas == max_parejas) {
        acaba("too many pairs");
    }
    p->padre = open(padre, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    snprintf(p->nombre, sizeof p->nombre, "%s", nombre);
    snprintf(p->aparte, sizeof p->aparte, "l%d", num_parejas);
    enlace(texto("aparte/%s", p->aparte), destino);
    ++num_parejas;
}

/* What the intruder puts in place of a directory: the same files, every second one a link to the one outside. */
static void senyuelo(const char *donde, const char *imita, unsigned ficheros) {
    directorio(donde);
    for (unsigned i = 0; i < ficheros; ++i) {
        const char *ruta = texto("%s/f%u", donde, i);
        if (i % 2 == 0) {
            fichero(ruta, i);
        } else {
            enlace(ruta, texto("%s/f%u", imita, i));
        }
    }
}

/* The tree, the links for the Unix attacker, the decoys for the intruder. */
static void siembra(int sube, int con_raiz, int solo_raiz) {
    directorio("aparte");
    aparte = open("aparte", O_RDONLY | O_DIRECTORY);
    num_parejas = 0;
    if (sube) {
        directorio("t");
        for (int k = 0; k < cadenas; ++k) {
            cadena(texto("t/k%d", k), 0);
            char *padre = texto("t/k%d", k);
            for (int c = 0; c < eslabones; ++c) {
                pareja(padre, texto("c%d", c), texto("fuera/v%d_%d", k, c));
                padre = texto("%s/c%d", padre, c);
                if (c + 1 < eslabones) {
                    directorio(texto("aparte/s%d_%d", k, c));
                    enlace(texto("aparte/s%d_%d/c%d", k, c, c + 1), texto("fuera/v%d_%d", k, c + 1));
                }
            }
        }
        return;
    }
    rama("t", 0, 0);
    if (con_raiz) {
        pareja(".", "t", "fuera/m0");
    }
    pareja("t", "f1", "fuera/m0/f1");
    pareja("t", "f36", "fuera/m0/f36");
    senyuelo("aparte/sr", "fuera/m0", en_raiz);
    if (solo_raiz) {
        return;
    }
    for (int d = 0; d < ramas; ++d) {
        pareja("t", texto("d%d", d), texto("fuera/m1_%d", d));
        pareja(texto("t/d%d", d), "f1", texto("fuera/m1_%d/f1", d));
        senyuelo(texto("aparte/s%d", d), texto("fuera/m1_%d", d), 8);
        for (int e = 0; e < hojas; ++e) {
            pareja(texto("t/d%d", d), texto("e%d", e), texto("fuera/m2_%d_%d", d, e));
            pareja(texto("t/d%d/e%d", d, e), "g", texto("fuera/m3_%d_%d", d, e));
            enlace(texto("aparte/s%d/e%d", d, e), texto("fuera/m2_%d_%d", d, e));
            pareja(texto("t/d%d/e%d", d, e), "f1", texto("fuera/m2_%d_%d/f1", d, e));
            senyuelo(texto("aparte/s%d_%d", d, e), texto("fuera/m2_%d_%d", d, e), 4);
            enlace(texto("aparte/s%d_%d/g", d, e), texto("fuera/m3_%d_%d", d, e));
        }
    }
}

static void recoge(void) {
    for (int i = 0; i < num_parejas; ++i) {
        close(parejas[i].padre);
    }
    close(aparte);
    aparte = -1;
    num_parejas = 0;
    arrasa("t");
    arrasa("aparte");
}

/* The Unix attacker, a process of its own: told by shared memory when to begin and to end. */
struct pizarra {
    volatile int sigue;
    volatile long cambios;
};
static struct pizarra *pizarra;

static void ataca(unsigned semilla) {
    const struct timespec nada = {0, 20000};
    while (pizarra->sigue) {
        const struct pareja *p = &parejas[rand_r(&semilla) % (unsigned)num_parejas];
        /* In and out again, mostly at once: what is looked at and what is used shall differ. */
        for (int i = 0; i < 2; ++i) {
            if (renameat2(p->padre, p->nombre, aparte, p->aparte, RENAME_EXCHANGE) == 0) {
                pizarra->cambios = pizarra->cambios + 1;
            }
            if (rand_r(&semilla) % 8 == 0) {
                nanosleep(&nada, NULL);
            }
        }
    }
}

static pid_t suelta_al_atacante(unsigned semilla) {
    pizarra->sigue = 1;
    const pid_t quien = fork();
    if (quien == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        ataca(semilla);
        _exit(0);
    }
    return quien;
}

/* The links that are left in the tree are taken out, directories that can be put back are. */
static int desenlaza(const char *ruta, const struct stat *s, int tipo, struct FTW *f) {
    (void)s, (void)f;
    if (tipo == FTW_SL || tipo == FTW_SLN) {
        unlink(ruta);
    }
    return 0;
}
static void ordena(void) {
    for (int i = 0; i < num_parejas; ++i) {
        const struct pareja *p = &parejas[i];
        struct stat s;
        if (fstatat(p->padre, p->nombre, &s, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(s.st_mode) &&
            renameat2(p->padre, p->nombre, aparte, p->aparte, RENAME_EXCHANGE) != 0) {
            unlinkat(p->padre, p->nombre, 0);
        }
    }
    nftw("t", desenlaza, 16, FTW_PHYS);
}

/* A Windows program that is asked by lines and answers by lines. */
struct programa {
    const char *nombre;
    int a;
    int de;
    pid_t pid;
};

static struct programa arranca(const char *nombre, const char *orden) {
    int ida[2], vuelta[2];
    if (pipe2(ida, O_CLOEXEC) != 0 || pipe2(vuelta, O_CLOEXEC) != 0) {
        acaba("no pipe");
    }
    struct programa p = {nombre, ida[1], vuelta[0], fork()};
    if (p.pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        dup2(ida[0], 0);
        dup2(vuelta[1], 1);
        execl("/bin/sh", "sh", "-c", orden, (char *)NULL);
        _exit(127);
    }
    close(ida[0]);
    close(vuelta[1]);
    return p;
}

static void di(const struct programa *p, const char *linea) {
    if (write(p->a, linea, strlen(linea)) != (ssize_t)strlen(linea)) {
        acaba("%s does not listen", p->nombre);
    }
}

/* Answers whether a whole line has come in time. */
static int oye(const struct programa *p, char *linea, size_t sitio, int ms) {
    size_t largo = 0;
    while (largo + 1 < sitio) {
        struct pollfd espera = {p->de, POLLIN, 0};
        if (poll(&espera, 1, ms) <= 0) {
            if (largo == 0) {
                return 0;
            }
            continue;
        }
        if (read(p->de, linea + largo, 1) != 1) {
            int fin = 0;
            waitpid(p->pid, &fin, 0);
            acaba("%s ended before its time: status %d", p->nombre, fin);
        }
        if (linea[largo] == '\n') {
            break;
        }
        largo += linea[largo] != '\r';
    }
    linea[largo] = '\0';
    return 1;
}

struct resultado {
    long rondas;
    long cambios;
    long perdidos;
    long listados;
    double segundos;
};

static struct resultado lucha(int cual, int con_windows, long rondas, const struct programa *victima,
                              const struct programa *intruso) {
    const struct funcion *f = &funciones[cual];
    struct resultado r = {0, 0, 0, 0, 0};
    struct timespec antes, despues;
    clock_gettime(CLOCK_MONOTONIC, &antes);
    long fuera = siembra_fuera(f->sube);
    /* A round in which the attacker never gets his turn is none: there are more until he has. */
    const long a_lo_mas = 20 * rondas;
    for (; r.rondas < rondas || (r.cambios == 0 && r.rondas < a_lo_mas); ++r.rondas) {
        const long ronda = r.rondas;
        char linea[200];
        const int con_raiz = f->solo_raiz || ronda % 4 == 3;
        siembra(f->sube, con_raiz, f->solo_raiz);
        pid_t quien = 0;
        pizarra->cambios = 0;
        if (con_windows) {
            di(intruso, f->sube ? "sube\n" : con_raiz ? "raiz\n" : "ramas\n");
            oye(intruso, linea, sizeof linea, paciencia_ms); /* under way */
        } else {
            quien = suelta_al_atacante((unsigned)(cual * 1000 + ronda));
        }
        di(victima, texto("%d\n", cual));
        const int ya = oye(victima, linea, sizeof linea, ataque_ms);
        if (con_windows) {
            char cambios[200];
            di(intruso, "basta\n");
            if (!oye(intruso, cambios, sizeof cambios, paciencia_ms)) {
                acaba("the intruder does not answer");
            }
            r.cambios += atol(cambios);
        } else {
            pizarra->sigue = 0;
            waitpid(quien, NULL, 0);
            r.cambios += pizarra->cambios;
        }
        if (!ya) {
            ordena();
            if (!oye(victima, linea, sizeof linea, paciencia_ms)) {
                acaba("%s does not come back", f->nombre);
            }
        }
        r.listados += atol(linea);
        const long quedan = censo();
        r.perdidos += fuera - quedan;
        recoge();
        if (quedan != fuera) {
            fuera = siembra_fuera(f->sube);
        }
    }
    clock_gettime(CLOCK_MONOTONIC, &despues);
    r.segundos = (double)(despues.tv_sec - antes.tv_sec) + (double)(despues.tv_nsec - antes.tv_nsec) / 1e9;
    return r;
}

/* Tells Wine's server (servidor.c) whether it shall do what it does to one and the same file: nobody but a Unix process
   gets between two of its steps. */
static void ata_al_servidor(int si) {
    const char *senyal = getenv("LUMODIR_ATADO");
    if (senyal != NULL && si) {
        close(open(senyal, O_CREAT | O_WRONLY, 0644));
    } else if (senyal != NULL) {
        unlink(senyal);
    }
}

int main(int argc, char **argv) {
    if (argc < 6 || (atol(argv[2]) <= 0 && atol(argv[3]) <= 0)) {
        acaba("arena ARENA UNIX-ROUNDS WINDOWS-ROUNDS VICTIM-COMMAND INTRUDER-COMMAND [RESULTS.xml]");
    }
    const long rondas_de[] = {atol(argv[2]), atol(argv[3])};
    if (realpath(argv[1], base) == NULL || chdir(base) != 0) {
        acaba("no arena %s", argv[1]);
    }
    pizarra = mmap(NULL, sizeof *pizarra, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    signal(SIGPIPE, SIG_IGN);
    recoge();
    const struct programa victima = arranca("the victim", argv[4]);
    const struct programa intruso = arranca("the intruder", argv[5]);
    char linea[200];
    if (!oye(&victima, linea, sizeof linea, paciencia_ms) || strcmp(linea, "victima") != 0 ||
        !oye(&intruso, linea, sizeof linea, paciencia_ms) || strcmp(linea, "intruso") != 0) {
        acaba("the Windows programs do not start: %s", linea);
    }

    FILE *xml = argc > 6 ? fopen(argv[6], "w") : NULL;
    char casos[40000] = "";
    int malos = 0;
    printf("%-8s %-66s %7s %9s %6s %6s %7s\n", "attacker", "function", "rounds", "swaps", "lost", "listed", "seconds");
    for (int con_windows = 0; con_windows < 2; ++con_windows) {
        ata_al_servidor(!con_windows);
        const char *atacante = con_windows ? "Windows" : "Unix";
        const long rondas = rondas_de[con_windows];
        for (int i = 0; i < num_funciones && rondas > 0; ++i) {
            const struct resultado r = lucha(i, con_windows, rondas, &victima, &intruso);
            printf("%-8s %-66s %7ld %9ld %6ld %6ld %7.1f\n", atacante, funciones[i].nombre, r.rondas, r.cambios,
                   r.perdidos, r.listados, r.segundos);
            fflush(stdout);
            const int mal = r.perdidos != 0 || r.listados != 0 || r.cambios == 0;
            malos += mal;
            const size_t largo = strlen(casos);
            snprintf(casos + largo, sizeof casos - largo,
                     "<testcase name=\"%s_%s\" status=\"run\" time=\"%.1f\" classname=\"ataque\">%s</testcase>\n",
                     funciones[i].nombre, atacante, r.segundos,
                     mal ? texto("<failure message=\"%ld lost, %ld listed outside in %ld swaps\"></failure>",
                                 r.perdidos, r.listados, r.cambios)
                         : "");
        }
    }
    if (xml != NULL) {
        fprintf(xml,
                "<testsuites tests=\"%d\" failures=\"%d\" disabled=\"0\" errors=\"0\" name=\"AllTests\">\n"
                "<testsuite name=\"ataque\" tests=\"%d\" failures=\"%d\" disabled=\"0\" skipped=\"0\" "
                "errors=\"0\">\n%s</testsuite>\n</testsuites>\n",
                2 * num_funciones, malos, 2 * num_funciones, malos, casos);
        fclose(xml);
    }
    di(&victima, "fin\n");
    di(&intruso, "fin\n");
    arrasa("fuera");
    if (malos != 0) {
        printf("%d of %d: something outside was lost or listed, or nothing was swapped\n", malos, 2 * num_funciones);
    }
    return malos == 0 ? 0 : 1;
}
