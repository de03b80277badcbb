// Machines with drives of the test's choice: a false one behind the library's drive calls, and, under Wine,
// real drives of every kind that are put there for the life of an object. Windows only.
#pragma once

#include <cstring>
#include <map>

#include "apoyo/apoyo.hpp"
#include "system/unidades.hpp"
// Leans on the types that the header above brings.
#include <winioctl.h>

namespace apoyo {

// One drive of the false machine. A text that is NULL makes its call fail.
struct unidad_fingida {
    UINT tipo;                      // as GetDriveTypeW tells it
    const char* volumen = nullptr;  // UTF-8
    const char* red = nullptr;
    const char* dispositivo = nullptr;
    const char* directorio = nullptr;  // the current one
};

// The letters that are not in the map are not there; GetLogicalDrives shows those that are.
class maquina_fingida {
public:
    explicit maquina_fingida(std::map<char, unidad_fingida> discos, int actual = 3)
        : antes_(interno::sistema), discos_(std::move(discos)), actual_(actual) {
        i_yo() = this;
        interno::tabla_sistema& t = interno::sistema;
        t.GetLogicalDrives = i_presentes;
        t.GetDriveTypeW = i_tipo;
        t.GetVolumeInformationW = i_volumen;
        t.QueryDosDeviceW = i_dispositivo;
        t.WNetGetConnectionW = i_red;
        t._wgetdcwd = i_directorio;
        t._getdrive = i_actual;
        ::SetThreadErrorMode(modo_del_anfitrion, &modo_de_antes_);
    }
    ~maquina_fingida() {
        interno::sistema = antes_;
        EXPECT_EQ(::GetThreadErrorMode(), modo_del_anfitrion) << "the mode of the thread was not put back";
        ::SetThreadErrorMode(modo_de_antes_, nullptr);
    }
    maquina_fingida(const maquina_fingida&) = delete;
    maquina_fingida& operator=(const maquina_fingida&) = delete;

    // What the library asked, in order: "GetDriveTypeW C:\".
    std::vector<std::string> preguntas;

private:
    static maquina_fingida*& i_yo() {
        static maquina_fingida* yo = nullptr;
        return yo;
    }
    static const unidad_fingida* i_busca(const char* llamada, const wchar_t* nombre) {
        i_yo()->preguntas.push_back(std::string(llamada) + " " + u8(nombre));
        const auto i = i_yo()->discos_.find(static_cast<char>(nombre[0]));
        return i == i_yo()->discos_.end() ? nullptr : &i->second;
    }
    // Copies a text with its terminator where it fits; 0 where not, with rubbish in the buffer.
    static DWORD i_da(const char* texto, wchar_t* destino, DWORD sitio) {
        destino[0] = L'#';
        if (sitio > 1) {
            destino[1] = L'\0';
        }
        if (texto == nullptr) {
            ::SetLastError(ERROR_NOT_READY);
            return 0;
        }
        const texto_w ancho = w(texto);
        if (ancho.size() >= sitio) {
            ::SetLastError(ERROR_MORE_DATA);
            return 0;
        }
        std::memcpy(destino, ancho.c_str(), (ancho.size() + 1) * sizeof(wchar_t));
        return static_cast<DWORD>(ancho.size() + 1);
    }

    static DWORD WINAPI i_presentes() {
        DWORD mascara = 0;
        for (const auto& [letra, unidad] : i_yo()->discos_) {
            mascara |= 1u << (letra - 'A');
        }
        return mascara;
    }
    // Every call that could come upon a drive without medium.
    static void i_espera_sin_dialogos(const char* llamada) {
        EXPECT_NE(::GetThreadErrorMode() & SEM_FAILCRITICALERRORS, 0u)
            << llamada << " could bring up a dialog of the system";
    }
    static UINT WINAPI i_tipo(const wchar_t* raiz) {
        i_espera_sin_dialogos("GetDriveTypeW");
        const unidad_fingida* u = i_busca("GetDriveTypeW", raiz);
        return u == nullptr ? DRIVE_NO_ROOT_DIR : u->tipo;
    }
    static BOOL WINAPI i_volumen(const wchar_t* raiz, wchar_t* nombre, DWORD sitio, DWORD*, DWORD*, DWORD*,
                                 wchar_t*, DWORD) {
        i_espera_sin_dialogos("GetVolumeInformationW");
        const unidad_fingida* u = i_busca("GetVolumeInformationW", raiz);
        EXPECT_EQ(nombre[0], L'\0') << "the buffer starts empty";
        EXPECT_EQ(sitio, 1024u);
        return i_da(u == nullptr ? nullptr : u->volumen, nombre, sitio) != 0;
    }
    static DWORD WINAPI i_dispositivo(const wchar_t* nombre, wchar_t* destino, DWORD sitio) {
        const unidad_fingida* u = i_busca("QueryDosDeviceW", nombre);
        EXPECT_EQ(destino[0], L'\0') << "the buffer starts empty";
        EXPECT_EQ(sitio, 254u);
        return u == nullptr || u->dispositivo == nullptr ? 0 : i_da(u->dispositivo, destino, sitio);
    }
    static DWORD WINAPI i_red(const wchar_t* nombre, wchar_t* destino, DWORD* sitio) {
        const unidad_fingida* u = i_busca("WNetGetConnectionW", nombre);
        EXPECT_EQ(destino[0], L'\0') << "the buffer starts empty";
        EXPECT_EQ(*sitio, 64u);
        return i_da(u == nullptr ? nullptr : u->red, destino, *sitio) != 0 ? NO_ERROR : ::GetLastError();
    }
    static wchar_t* i_directorio(int numero, wchar_t* destino, int sitio) {
        i_espera_sin_dialogos("_wgetdcwd");
        const int cual = numero == 0 ? i_yo()->actual_ : numero;
        const auto i = i_yo()->discos_.find(static_cast<char>('A' + cual - 1));
        EXPECT_EQ(sitio, 260);
        // The C runtime takes these for an invalid parameter and, where nobody handles that, ends the program.
        if (i == i_yo()->discos_.end() || i->second.tipo == DRIVE_UNKNOWN ||
            i->second.tipo == DRIVE_NO_ROOT_DIR) {
            ADD_FAILURE() << "asked for the directory of a drive that is not there: " << numero;
            return nullptr;
        }
        return i_da(i->second.directorio, destino, static_cast<DWORD>(sitio)) != 0 ? destino : nullptr;
    }
    static int i_actual() { return i_yo()->actual_; }

    static constexpr DWORD modo_del_anfitrion =
        SEM_NOGPFAULTERRORBOX;  // dialogs, as a program starts with them
    interno::tabla_sistema antes_;
    DWORD modo_de_antes_ = 0;
    std::map<char, unidad_fingida> discos_;
    int actual_;
};

// Drives of Wine, as its control panel defines them: through its mount manager. On real Windows there is no such
// service and `hay()` is false.
class unidades_de_wine {
public:
    struct unidad {
        char letra;
        ULONG tipo;
    };

    explicit unidades_de_wine(std::vector<unidad> discos) : discos_(std::move(discos)) {
        gestor_ = ::CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
        for (const unidad& u : discos_) {
            hay_ = i_define(u.letra, u.tipo) && hay_;
        }
    }
    ~unidades_de_wine() {
        for (const unidad& u : discos_) {
            i_define(u.letra, DRIVE_NO_ROOT_DIR);
        }
        ::CloseHandle(gestor_);
    }
    unidades_de_wine(const unidades_de_wine&) = delete;
    unidades_de_wine& operator=(const unidades_de_wine&) = delete;

    bool hay() const { return hay_; }

private:
    // The request of Wine's mount manager, with the Unix directory after it.
    struct peticion {
        ULONG tamanyo;
        ULONG tipo;
        ULONG sistema_de_ficheros;
        DWORD serie;
        ULONGLONG dispositivo_unix;
        WCHAR letra;
        USHORT sitio_directorio;
        USHORT sitio_dispositivo;
        USHORT sitio_etiqueta;
        char directorio[8];
    };
    bool i_define(char letra, ULONG tipo) const {
        constexpr DWORD define_unidad =
            CTL_CODE('m', 32, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS);
        peticion p = {};
        p.tamanyo = sizeof p;
        p.tipo = tipo;
        p.letra = static_cast<WCHAR>(letra);
        p.sitio_directorio = offsetof(peticion, directorio);
        std::strcpy(p.directorio, "/tmp");
        DWORD devueltos = 0;
        return ::DeviceIoControl(gestor_, define_unidad, &p, sizeof p, nullptr, 0, &devueltos, nullptr) !=
               FALSE;
    }

    std::vector<unidad> discos_;
    HANDLE gestor_;
    bool hay_ = true;
};

}  // namespace apoyo
