// The table of system calls that tell about drives: tests replace an entry, and so show the library drives that the
// machine does not have.
//
// Promises: each entry has the signature and the error convention of the system function whose name it bears.
// Checked by tests/system/discos_win32_test.cpp, info_win32_test.cpp and unidades_win32_test.cpp.
#pragma once

#include "companions/sistema.hpp"
// Leans on the types that the header above brings.
#include <direct.h>
#include <winnetwk.h>

namespace lumodir {

struct tabla_unidades {
    decltype(&::GetLogicalDrives) GetLogicalDrives;
    decltype(&::GetDriveTypeW) GetDriveTypeW;
    decltype(&::GetVolumeInformationW) GetVolumeInformationW;
    decltype(&::QueryDosDeviceW) QueryDosDeviceW;
    decltype(&::WNetGetConnectionW) WNetGetConnectionW;
    decltype(&::_wgetdcwd) _wgetdcwd;
    decltype(&::_getdrive) _getdrive;
};

extern tabla_unidades unidades;

inline constexpr unsigned short i_NUM_MAX_UNIDADES = 26;

constexpr wchar_t i_letra_de_unidad(unsigned short indice) noexcept {
    return static_cast<wchar_t>(L'A' + indice);
}

// "X:\", which the system takes for the drive itself.
struct raiz_de_unidad {
    wchar_t texto[4];
    constexpr explicit raiz_de_unidad(wchar_t letra) noexcept : texto{letra, L':', L'\\', L'\0'} {}
    constexpr const wchar_t* c_str() const noexcept { return texto; }
};

// "X:", the name of the device.
struct nombre_de_unidad {
    wchar_t texto[3];
    constexpr explicit nombre_de_unidad(wchar_t letra) noexcept : texto{letra, L':', L'\0'} {}
    constexpr const wchar_t* c_str() const noexcept { return texto; }
};

}  // namespace lumodir
