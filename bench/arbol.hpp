// Real directories for the benches, made with Windows' own calls and gone with the object.
#pragma once

#include <filesystem>
#include <string>

namespace bancos {

class directorio_temporal {
public:
    directorio_temporal();
    ~directorio_temporal() { std::filesystem::remove_all(ruta_); }
    directorio_temporal(const directorio_temporal&) = delete;
    directorio_temporal& operator=(const directorio_temporal&) = delete;

    const std::wstring& ruta() const { return ruta_; }
    // `cuantos` empty files in a subdirectory, in no particular order of names.
    std::wstring con_ficheros(const wchar_t* nombre, unsigned cuantos) const;
    // A tree of directories, `ramas` in each down to `niveles`, with `ficheros` files spread over them evenly.
    std::wstring con_arbol(const wchar_t* nombre, unsigned ramas, unsigned niveles, unsigned ficheros) const;

private:
    std::wstring ruta_;
};

}  // namespace bancos
