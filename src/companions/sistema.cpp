// See sistema.hpp.
#include "companions/sistema.hpp"

#include <winternl.h>

#include <cstring>
#include <cwchar>

namespace interno {
namespace {

// The object's name in NtQueryObject.
constexpr auto clase_nombre_de_objeto = static_cast<OBJECT_INFORMATION_CLASS>(1);
// The file's number in NtQueryInformationFile.
constexpr auto clase_numero_de_fichero = static_cast<FILE_INFORMATION_CLASS>(6);

// Answers as the Windows API does.
BOOL i_con_ultimo_error(NTSTATUS estado) noexcept {
    if (estado >= 0) {
        return TRUE;
    }
    ::SetLastError(::RtlNtStatusToDosError(estado));
    return FALSE;
}

// Calls a function of the shell, which stays once it is loaded, as its objects do; without it the answer is `sin_ella`. The
// system finds this library's name in its own directory before any other.
template <class R, class... A>
R i_llama_al_escritorio(const char* nombre, R sin_ella, A... argumentos) {
    const HMODULE shell32 = ::LoadLibraryW(L"shell32.dll");
    const auto funcion = shell32 == nullptr ? nullptr : ::GetProcAddress(shell32, nombre);
    return funcion == nullptr
               ? sin_ella
               : reinterpret_cast<R(WINAPI*)(A...)>(reinterpret_cast<void (*)()>(funcion))(argumentos...);
}

}  // namespace

namespace propias {

HANDLE WINAPI abre_entrada(const wchar_t* nombre, HANDLE directorio, DWORD acceso, DWORD compartir,
                           DWORD opciones, DWORD atributos) {
    constexpr std::size_t max_unidades = 0x7FFE;  // of a text that counts its bytes in 16 bits
    const std::size_t largo = std::wcslen(nombre);
    if (largo > max_unidades) {
        ::SetLastError(ERROR_FILENAME_EXCED_RANGE);
        return INVALID_HANDLE_VALUE;
    }
    UNICODE_STRING texto;
    texto.Length = texto.MaximumLength = static_cast<USHORT>(largo * sizeof(wchar_t));
    texto.Buffer =
        const_cast<wchar_t*>(nombre);  // NOLINT(cppcoreguidelines-pro-type-const-cast): it is only read
    OBJECT_ATTRIBUTES objeto;
    InitializeObjectAttributes(&objeto, &texto, atributos, directorio, nullptr);
    IO_STATUS_BLOCK estado;
    HANDLE abierto = INVALID_HANDLE_VALUE;
    return i_con_ultimo_error(::NtOpenFile(&abierto, acceso, &objeto, &estado, compartir, opciones))
               ? abierto
               : INVALID_HANDLE_VALUE;
}

BOOL WINAPI numero_de_fichero(HANDLE fichero, unsigned long long* numero) {
    IO_STATUS_BLOCK estado;
    return i_con_ultimo_error(
        ::NtQueryInformationFile(fichero, &estado, numero, sizeof *numero, clase_numero_de_fichero));
}

BOOL WINAPI nombre_de_fichero(HANDLE fichero, void* bufer, DWORD bytes, const wchar_t** nombre,
                              DWORD* unidades) {
    ULONG escritos = 0;
    if (!i_con_ultimo_error(::NtQueryObject(fichero, clase_nombre_de_objeto, bufer, bytes, &escritos))) {
        return FALSE;
    }
    UNICODE_STRING texto;
    std::memcpy(&texto, bufer, sizeof texto);
    *nombre = texto.Buffer;
    *unidades = texto.Length / DWORD{sizeof(wchar_t)};
    return TRUE;
}

BOOL WINAPI sigue_enlaces() {
    static const bool siguelos =
        ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return siguelos ? TRUE : FALSE;
}

DWORD WINAPI FormatMessageW(DWORD opciones, LPCVOID origen, DWORD codigo, DWORD idioma, LPWSTR destino,
                            DWORD sitio, char** argumentos) {
    return ::FormatMessageW(opciones, origen, codigo, idioma, destino, sitio,
                            reinterpret_cast<va_list*>(argumentos));
}

HRESULT WINAPI SHGetMalloc(IMalloc** asignador) {
    return i_llama_al_escritorio("SHGetMalloc", HRESULT{E_NOTIMPL}, asignador);
}

HRESULT WINAPI SHGetDesktopFolder(IShellFolder** carpeta) {
    return i_llama_al_escritorio("SHGetDesktopFolder", HRESULT{E_NOTIMPL}, carpeta);
}

BOOL WINAPI SHGetPathFromIDListW(const _ITEMIDLIST* lista, LPWSTR ruta) {
    return i_llama_al_escritorio("SHGetPathFromIDListW", BOOL{FALSE}, lista, ruta);
}

funcion_nombre_largo busca_nombre_largo() {
    const HMODULE kernel32 = ::GetModuleHandleA("KERNEL32.DLL");
    return reinterpret_cast<funcion_nombre_largo>(
        reinterpret_cast<void (*)()>(::GetProcAddress(kernel32, "GetLongPathNameW")));
}

bool machine_es_imagen_de_64bits() {
    return sizeof(void*) == 8;
}

// The counter's low bits differ between any two calls; the multiplier (of a linear congruential generator) and
// the shift bring them to bear on the bits that are used.
unsigned numero_al_azar() {
    LARGE_INTEGER contador;
    ::QueryPerformanceCounter(&contador);
    const auto semilla = static_cast<unsigned long long>(contador.QuadPart) ^
                         static_cast<unsigned long long>(::GetCurrentProcessId()) << 32;
    return static_cast<unsigned>(semilla * 6364136223846793005ull >> 40);
}

void duerme_ms(unsigned long milisegundos) {
    ::Sleep(milisegundos);
}

// The process ends here, and what is counted of its runs with it. GCOVR_EXCL_START
void termina_proceso() {
    ::TerminateProcess(::GetCurrentProcess(), 3);
}
// GCOVR_EXCL_STOP

#define LUMODIR_LLAMADA(Nombre) Nombre,
#define LUMODIR_LLAMADA_QUE_FALLA(Clase, Nombre, Fallo) LUMODIR_LLAMADA(Nombre)
const tabla_sistema de_windows = {LUMODIR_LLAMADAS_QUE_FALLAN(LUMODIR_LLAMADA_QUE_FALLA)
                                      LUMODIR_LLAMADAS_QUE_NO_FALLAN(LUMODIR_LLAMADA)};

}  // namespace propias

tabla_sistema sistema = propias::de_windows;

}  // namespace interno
