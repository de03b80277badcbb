/*
 * For Wine's server (LD_PRELOAD; tools/attack), which follows a path twice where Windows has a handle: what it looks at and
 * then deletes by the same path, and what it opens and then names by the same path. A Unix process that exchanges a
 * directory for a link in between sends the second one elsewhere, and no program under Wine has a hand in that. As long as
 * the file that LUMODIR_ATADO names is there, the deletion is made in the directory in which the look was, and the name is
 * that of what was opened. What a program has opened outside is deleted outside all the same.
 */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

/* The last path that was looked at, and the last file that was opened; the server has one thread. */
static char mirada[PATH_MAX];
static int padre = -1;
static int abierto = -1;

static int atado(void) {
    const char *senyal = getenv("LUMODIR_ATADO");
    return senyal != NULL && access(senyal, F_OK) == 0;
}

static const char *nombre_de(const char *ruta) {
    const char *barra = strrchr(ruta, '/');
    return barra == NULL ? ruta : barra + 1;
}

static void olvida(void) {
    if (padre >= 0) {
        close(padre);
    }
    padre = -1;
}

static int mira(const char *ruta, struct stat *s, int opciones) {
    olvida();
    if (ruta == NULL) {
        errno = EFAULT;
        return -1;
    }
    const char *nombre = nombre_de(ruta);
    const size_t largo = (size_t)(nombre - ruta);
    if (*nombre == '\0' || largo == 0 || strlen(ruta) >= sizeof mirada || !atado()) {
        return fstatat(AT_FDCWD, ruta, s, opciones);
    }
    memcpy(mirada, ruta, largo);
    mirada[largo] = '\0';
    padre = openat(AT_FDCWD, mirada, O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (padre < 0) {
        return -1;
    }
    strcpy(mirada + largo, nombre);
    return fstatat(padre, nombre, s, opciones);
}

static int borra(const char *ruta, int opciones) {
    if (padre < 0 || ruta == NULL || strcmp(ruta, mirada) != 0) {
        return unlinkat(AT_FDCWD, ruta, opciones);
    }
    const int estado = unlinkat(padre, nombre_de(ruta), opciones);
    const int error = errno;
    olvida();
    errno = error;
    return estado;
}

/* Under their names for the linker alone: the C library promises that no path is NULL, and the server has one at times. */
int mira_siguiendo(const char *ruta, struct stat *s) __asm__("stat");
int mira_sin_seguir(const char *ruta, struct stat *s) __asm__("lstat");
int borra_fichero(const char *ruta) __asm__("unlink");
int borra_directorio(const char *ruta) __asm__("rmdir");
int abre(const char *ruta, int opciones, ...) __asm__("open");
char *da_nombre(const char *ruta, char *sitio) __asm__("realpath");

int mira_siguiendo(const char *ruta, struct stat *s) {
    return mira(ruta, s, 0);
}
int mira_sin_seguir(const char *ruta, struct stat *s) {
    return mira(ruta, s, AT_SYMLINK_NOFOLLOW);
}
int borra_fichero(const char *ruta) {
    return borra(ruta, 0);
}
int borra_directorio(const char *ruta) {
    return borra(ruta, AT_REMOVEDIR);
}

int abre(const char *ruta, int opciones, ...) {
    va_list argumentos;
    va_start(argumentos, opciones);
    abierto = openat(AT_FDCWD, ruta, opciones, (opciones & O_CREAT) != 0 ? va_arg(argumentos, int) : 0);
    va_end(argumentos);
    return abierto;
}

/* The name is asked for right after the opening. */
char *da_nombre(const char *ruta, char *sitio) {
    const int cual = abierto;
    abierto = -1;
    if (cual < 0 || sitio != NULL || !atado()) {
        return canonicalize_file_name(ruta);
    }
    char enlace[64], nombre[PATH_MAX];
    snprintf(enlace, sizeof enlace, "/proc/self/fd/%d", cual);
    const ssize_t largo = readlink(enlace, nombre, sizeof nombre);
    return largo <= 0 || largo >= (ssize_t)sizeof nombre ? NULL : strndup(nombre, (size_t)largo);
}
