// See sistema.hpp.
#include "companions/sistema.hpp"

namespace lumodir {

tabla_sistema sistema = {
    ::GetFileAttributesW,
    ::GetFileAttributesExW,
    ::SetFileAttributesW,
    ::CreateFileW,
    ::CloseHandle,
    ::GetFileInformationByHandle,
    ::GetFileInformationByHandleEx,
    ::SetFileInformationByHandle,
    ::SetFileTime,
    ::FileTimeToLocalFileTime,
    ::LocalFileTimeToFileTime,
    ::FileTimeToSystemTime,
    ::SystemTimeToTzSpecificLocalTime,
    ::SystemTimeToFileTime,
    ::GetTimeZoneInformation,
    ::DeleteFileW,
    ::CreateDirectoryW,
    ::RemoveDirectoryW,
    ::MoveFileExW,
    ::FindFirstFileExW,
    ::FindNextFileW,
    ::FindClose,
    ::GetFullPathNameW,
    ::GetShortPathNameW,
    ::GetLongPathNameW,
    ::GetTempPathW,
    ::GetTempFileNameW,
    ::GetWindowsDirectoryW,
    ::GetModuleFileNameA,
    ::GetModuleFileNameW,
};

}  // namespace lumodir
