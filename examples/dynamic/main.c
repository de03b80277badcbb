/*
 * lumodir loaded while the program runs: for a program that must start without it, or a plug-in, or another
 * language. No header and no import library are needed; the functions are plain C with the names of the headers.
 */
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>

/* The types of the functions used, copied from the headers: truth values are `unsigned short`, 1 is true. */
typedef unsigned short (*is_valid_path_t)(const wchar_t *path, wchar_t **message);
typedef wchar_t *(*repair_name_t)(const wchar_t *name);
typedef void (*free_text_t)(wchar_t **text, const char *tag, unsigned long line);
typedef unsigned short (*exists_t)(const wchar_t *path);
typedef unsigned long long (*live_blocks_t)(void);
typedef void (*set_language_t)(unsigned long slot);
typedef void (*on_error_t)(const char *expression, const char *tag, unsigned long line, const wchar_t *detail,
                           void *context);
typedef void (*set_on_error_t)(on_error_t receive, void *context);

static void on_internal_error(const char *expression, const char *tag, unsigned long line, const wchar_t *detail,
                              void *context) {
    (void)tag, (void)line, (void)detail, (void)context;
    wprintf(L"internal error: %hs\n", expression);
}

static HMODULE library;

/* Finds a function, or ends the program with its name. */
static FARPROC function(const char *name) {
    FARPROC found = GetProcAddress(library, name);
    if (found == NULL) {
        wprintf(L"lumodir.dll has no %hs\n", name);
        ExitProcess(1);
    }
    return found;
}

int main(void) {
    _setmode(_fileno(stdout), _O_U8TEXT); /* every script, to a console and to a file */
    library = LoadLibraryW(L"lumodir.dll");
    if (library == NULL) {
        wprintf(L"lumodir.dll was not found: error %lu\n", GetLastError());
        return 1;
    }
    /* Through void*: a FARPROC may stand for any function, and compilers warn about the direct cast. */
    is_valid_path_t is_valid_path = (is_valid_path_t)(void *)function("cdir_es_path_valido_UNICODE");
    repair_name_t repair_name = (repair_name_t)(void *)function("cdir_dame_nombre_base_valido_UNICODE");
    exists_t exists = (exists_t)(void *)function("cdir_existe_fichero_UNICODE");
    free_text_t free_text = (free_text_t)(void *)function("widestr_nousar_destruye");
    live_blocks_t live_blocks = (live_blocks_t)(void *)function("lumospy_bloques_vivos");
    set_language_t set_language = (set_language_t)(void *)function("msglocal_establece_idioma");
    set_on_error_t set_on_error = (set_on_error_t)(void *)function("error_interno_establece_receptor");

    set_language(8); /* English; by default the user's language */
    set_on_error(on_internal_error, NULL);

    wchar_t *message = NULL;
    if (is_valid_path(L"C:\\what?.txt", &message) != 1) {
        wprintf(L"%ls\n", message);
        free_text(&message, "example", __LINE__); /* only the library can free what it gave */
    }
    wchar_t *name = repair_name(L"what?");
    wprintf(L"repaired: %ls\n", name);
    free_text(&name, "example", __LINE__);
    exists(NULL);

    /* Nothing of the library may be left, and no receiver of this program, when it goes. */
    wprintf(L"blocks never freed: %llu\n", live_blocks());
    set_on_error(NULL, NULL);
    FreeLibrary(library);
    return 0;
}
