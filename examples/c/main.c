/*
 * lumodir from C: who owns what, the services that a program plugs in, progress and stopping.
 *
 * Everything happens in the folder "example.dir" below the current one, which is removed at the end.
 */
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>

#include <cdir.h>
#include <companions/buclrein.h>
#include <companions/error_interno.h>
#include <companions/lmaviso.h>
#include <companions/lumospy.h>
#include <companions/msglocal.h>
#include <companions/widestr.h>
#include <fichsdir.h>
#include <lumodir.h>

/* Freeing a wide string names its place: this module and line would stand in a report about it. */
#define FREE(text) widestr_nousar_destruye(&(text), "example", __LINE__)

/* ---- Services: how the library talks to this program. A window would be shown where this one prints. ---- */

/* A mistake of the caller's, or a state that should not be. The library goes on after it. */
static void on_internal_error(const char *expression, const char *tag, unsigned long line, const wchar_t *detail,
                              void *context) {
    (void)tag, (void)line, (void)detail;
    ++*(int *)context; /* the pointer that was given with the receiver */
    wprintf(L"    internal error: %hs\n", expression);
}

/* A text for the user, in the user's language. It is valid only during the call: copy it to keep it. */
static void on_warning(const wchar_t *text, void *context) {
    (void)context;
    wprintf(L"    warning: %ls\n", text);
}

/* What the retry question below knows. */
struct held_file {
    HANDLE handle;            /* who holds the file: this program itself */
    unsigned short go_on;     /* the stop flag of a deletion */
    unsigned short try_again; /* how the user answers */
};

/* "It failed. Try again?" is asked when the silent retries are used up. */
static unsigned short on_retry_question(const wchar_t *message, unsigned long error_code, void *context) {
    struct held_file *held = context;
    (void)message; /* the text to show, with the system's own text for the error */
    wprintf(L"    try again after error %lu? %hs\n", error_code, held->try_again ? "yes" : "no, stop it all");
    if (held->try_again) {
        CloseHandle(held->handle);
    } else {
        held->go_on = FALSO;
    }
    return held->try_again; /* CIERTO tries again, anything else gives up */
}

/* Asked before each entry of a listing: the place to move a progress bar and to look at the Cancel button. */
static unsigned short on_progress(void *context) {
    int *entries_left = context;
    return --*entries_left < 0 ? CIERTO : FALSO; /* CIERTO stops the listing */
}

/* ---- The example ---- */

static void make_file(const wchar_t *path) {
    cdir_crea_directorios_fichero_UNICODE(path); /* the folders of the file */
    CloseHandle(CreateFileW(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
}

int main(void) {
    /* A console shows every script, and a file gets UTF-8: without this a name in Cyrillic would end its line. */
    _setmode(_fileno(stdout), _O_U8TEXT);
    int internal_errors = 0;
    struct held_file held = {INVALID_HANDLE_VALUE, CIERTO, CIERTO};

    /* Once, before anything else is called. */
    error_interno_establece_receptor(on_internal_error, &internal_errors);
    lmaviso_establece_receptor(on_warning, NULL);
    buclrein_establece_receptor(on_retry_question, &held);
    buclrein_establece_politica(2, 10); /* 2 silent retries, 10 ms before each; then the question */
    msglocal_establece_idioma(MSGLOCAL_INGLES);

    _putws(L"A text that comes out of the library is freed by the library:");
    wchar_t *message = NULL;
    if (cdir_es_path_valido_UNICODE(L"C:\\data\\con.txt", &message) != CIERTO) {
        wprintf(L"    %ls\n", message);
        FREE(message); /* message is NULL now */
    }
    wchar_t *drive, *directory, *name, *extension;
    cdir_splitpath_con_comprobacion_UNICODE(L"C:\\a\\b.txt", &drive, &directory, &name, &extension);
    wprintf(L"    %ls %ls %ls %ls\n", drive, directory, name, extension);
    FREE(drive);
    FREE(directory);
    FREE(name);
    FREE(extension);

    _putws(L"A record of the caller's is filled and released, not freed:");
    make_file(L"example.dir\\b.txt");
    make_file(L"example.dir\\a.txt");
    make_file(L"example.dir\\\u043e\u0442\u0447\u0451\u0442.txt"); /* a name in Cyrillic */
    make_file(L"example.dir\\sub\\c.dat");
    ListaFicheros_u files;
    cdir_lista_de_ficheros_UNICODE(L"example.dir", L"txt", &files);
    for (unsigned long i = 0; i < files.num; ++i) {
        wprintf(L"    %ls\n", files.lista[i]);
    }
    cdir_libera_lista_de_ficheros_UNICODE(&files);

    _putws(L"What the user should know is shown, what the programmer should know is reported:");
    cdir_path_valido_UNICODE(L"9:\\data", CIERTO);
    cdir_existe_fichero_UNICODE(NULL);

    _putws(L"A listing tells its progress and can be stopped:");
    int entries_left = 1;
    unsigned short stopped = FALSO;
    ArrCADENA *names = fichsdir_nombres_ficheros_prog("example.dir", &entries_left, &stopped, on_progress);
    wprintf(L"    stopped: %hs\n", stopped == CIERTO ? "yes" : "no");
    arr_DestruyeCADENA(&names); /* what was found so far; a list frees its strings */

    _putws(L"A file in use: the question is asked, and the deletion goes on:");
    held.handle = CreateFileW(L"example.dir\\b.txt", GENERIC_READ, 0, NULL, OPEN_EXISTING, 0, NULL);
    wprintf(L"    deleted: %hs\n", cdir_borra_fichero_UNICODE(L"example.dir\\b.txt") == CIERTO ? "yes" : "no");

    _putws(L"The same in a tree, and this time the user stops the whole deletion:");
    held.handle = CreateFileW(L"example.dir\\sub\\c.dat", GENERIC_READ, 0, NULL, OPEN_EXISTING, 0, NULL);
    held.try_again = FALSO;
    unsigned short deleted = cdir_borra_directorio_y_subdirectorios_parando(L"example.dir", &held.go_on);
    wprintf(L"    deleted: %hs\n", deleted == CIERTO ? "yes" : "no");
    CloseHandle(held.handle);

    _putws(L"At the end:");
    deleted = cdir_borra_directorio_y_subdirectorios_UNICODE(L"example.dir");
    wprintf(L"    deleted: %hs\n", deleted == CIERTO ? "yes" : "no");
    wprintf(L"    internal errors: %d, blocks never freed: %llu\n", internal_errors, lumospy_bloques_vivos());
    return 0;
}
