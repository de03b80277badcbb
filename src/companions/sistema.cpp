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
    ::SetFileTime,
    ::FileTimeToLocalFileTime,
    ::LocalFileTimeToFileTime,
    ::FileTimeToSystemTime,
    ::SystemTimeToTzSpecificLocalTime,
    ::SystemTimeToFileTime,
    ::DeleteFileW,
    ::CreateDirectoryW,
    ::RemoveDirectoryW,
    ::MoveFileExW,
    ::FindFirstFileExW,
    ::FindNextFileW,
    ::FindFirstFileA,
    ::FindNextFileA,
    ::FindClose,
    ::GetFullPathNameW,
    ::GetShortPathNameW,
    ::GetLongPathNameW,
    ::GetTempPathW,
    ::GetTempFileNameW,
    ::GetWindowsDirectoryW,
    ::GetModuleFileNameW,
};

}  // namespace lumodir
