// The tables of a DLL read out of its file, without the loader: what it exports and what it imports.
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace dll {

struct exportacion {
    std::string nombre;
    bool es_codigo;   // lies in an executable section
    bool es_reenvio;  // stands for a function of another DLL
};

// Whether a DLL is the C runtime of Windows: the old one, or the universal one by any of its names.
inline bool del_runtime_de_c(const std::string& dll) {
    return dll == "msvcrt.dll" || dll == "ucrtbase.dll" || dll.rfind("api-ms-win-crt-", 0) == 0;
}

// Where the DLL was loaded from; the command lies beside it. The folder may have any name.
inline std::filesystem::path fichero_de_la_dll() {
    wchar_t fichero[1024];
    ::GetModuleFileNameW(::GetModuleHandleW(L"lumodir.dll"), fichero, 1024);
    return fichero;
}

class imagen_pe {
public:
    explicit imagen_pe(const std::filesystem::path& fichero) {
        std::ifstream entrada(fichero, std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(entrada), std::istreambuf_iterator<char>());
        const std::uint32_t pe = lee<std::uint32_t>(0x3C);
        if (lee<std::uint32_t>(pe) != 0x00004550 || lee<std::uint16_t>(pe + 24) != 0x20B) {
            throw std::runtime_error(fichero.filename().string() + " is no 64-bit PE file");
        }
        maquina_ = lee<std::uint16_t>(pe + 4);
        directorios_ = pe + 24 + 112;
        secciones_ = pe + 24 + lee<std::uint16_t>(pe + 20);
        num_secciones_ = lee<std::uint16_t>(pe + 6);
    }

    std::uint16_t maquina() const { return maquina_; }
    // What the file asks the loader for: IMAGE_DLLCHARACTERISTICS_...
    std::uint16_t caracteristicas() const { return lee<std::uint16_t>(directorios_ - 112 + 70); }
    // The same in the debug directory, where the newer ones stand: IMAGE_DLLCHARACTERISTICS_EX_...
    std::uint32_t caracteristicas_ampliadas() const {
        constexpr std::uint32_t depuracion = 6;
        constexpr std::uint32_t ampliadas = 20;
        const std::uint32_t bytes = lee<std::uint32_t>(directorios_ + 8 * depuracion + 4);
        for (std::uint32_t i = 0; i + 28 <= bytes; i += 28) {
            const std::uint32_t entrada = tabla(depuracion) + i;
            if (lee<std::uint32_t>(entrada + 12) == ampliadas) {
                return lee<std::uint32_t>(lee<std::uint32_t>(entrada + 24));
            }
        }
        return 0;
    }
    const std::string& bytes() const { return bytes_; }

    // Its own name, as the export table has it.
    std::string nombre_propio() const { return texto(en_fichero(lee<std::uint32_t>(tabla(0) + 12))); }
    // Those with a number; LLD leaves the place of the first number empty.
    std::uint32_t num_funciones() const {
        const std::uint32_t funciones = en_fichero(lee<std::uint32_t>(tabla(0) + 28));
        std::uint32_t num = 0;
        for (std::uint32_t i = 0; i < lee<std::uint32_t>(tabla(0) + 20); ++i) {
            num += lee<std::uint32_t>(funciones + 4 * i) != 0 ? 1 : 0;
        }
        return num;
    }

    std::vector<exportacion> exportaciones() const {
        const std::uint32_t base = tabla(0);
        const std::uint32_t rva_tabla = lee<std::uint32_t>(directorios_);
        const std::uint32_t largo_tabla = lee<std::uint32_t>(directorios_ + 4);
        const std::uint32_t funciones = en_fichero(lee<std::uint32_t>(base + 28));
        const std::uint32_t nombres = en_fichero(lee<std::uint32_t>(base + 32));
        const std::uint32_t ordinales = en_fichero(lee<std::uint32_t>(base + 36));
        std::vector<exportacion> resultado;
        for (std::uint32_t i = 0; i < lee<std::uint32_t>(base + 24); ++i) {
            const std::uint32_t rva =
                lee<std::uint32_t>(funciones + 4u * lee<std::uint16_t>(ordinales + 2 * i));
            resultado.push_back({texto(en_fichero(lee<std::uint32_t>(nombres + 4 * i))), es_codigo(rva),
                                 rva >= rva_tabla && rva < rva_tabla + largo_tabla});
        }
        return resultado;
    }

    // Names of the DLLs that the loader must find, at start-up and on demand.
    std::vector<std::string> importadas() const {
        std::vector<std::string> resultado;
        constexpr std::uint32_t normales = 1;
        constexpr std::uint32_t diferidas = 13;
        if (lee<std::uint32_t>(directorios_ + 8 * normales) != 0) {
            for (std::uint32_t p = tabla(normales); lee<std::uint32_t>(p + 12) != 0; p += 20) {
                resultado.push_back(texto(en_fichero(lee<std::uint32_t>(p + 12))));
            }
        }
        if (lee<std::uint32_t>(directorios_ + 8 * diferidas) != 0) {
            for (std::uint32_t p = tabla(diferidas); lee<std::uint32_t>(p + 4) != 0; p += 32) {
                resultado.push_back(texto(en_fichero(lee<std::uint32_t>(p + 4))));
            }
        }
        return resultado;
    }

    // The functions that it imports by name at start-up, each with its DLL.
    std::vector<std::pair<std::string, std::string>> funciones_importadas() const {
        std::vector<std::pair<std::string, std::string>> resultado;
        for (std::uint32_t p = tabla(1); lee<std::uint32_t>(p + 12) != 0; p += 20) {
            const std::string dll = texto(en_fichero(lee<std::uint32_t>(p + 12)));
            const std::uint32_t nombres = en_fichero(lee<std::uint32_t>(p));
            for (std::uint32_t i = nombres; lee<std::uint64_t>(i) != 0; i += 8) {
                const auto nombre = lee<std::uint64_t>(i);
                if ((nombre >> 63) == 0) {
                    resultado.emplace_back(dll, texto(en_fichero(static_cast<std::uint32_t>(nombre)) + 2));
                }
            }
        }
        return resultado;
    }

private:
    template <class T>
    T lee(std::size_t posicion) const {
        if (posicion + sizeof(T) > bytes_.size()) {
            throw std::runtime_error("the file ends before its tables do");
        }
        T valor;
        std::memcpy(&valor, bytes_.data() + posicion, sizeof valor);
        return valor;
    }
    std::string texto(std::size_t posicion) const { return bytes_.c_str() + posicion; }
    std::uint32_t tabla(std::uint32_t numero) const {
        return en_fichero(lee<std::uint32_t>(directorios_ + 8 * numero));
    }
    // Offset of the section header that an address in memory lies in.
    std::size_t seccion_de(std::uint32_t rva) const {
        for (std::uint32_t i = 0; i < num_secciones_; ++i) {
            const std::size_t s = secciones_ + 40u * i;
            const std::uint32_t principio = lee<std::uint32_t>(s + 12);
            if (rva >= principio && rva < principio + lee<std::uint32_t>(s + 8)) {
                return s;
            }
        }
        throw std::runtime_error("an address outside every section");
    }
    std::uint32_t en_fichero(std::uint32_t rva) const {
        const std::size_t s = seccion_de(rva);
        return rva - lee<std::uint32_t>(s + 12) + lee<std::uint32_t>(s + 20);
    }
    bool es_codigo(std::uint32_t rva) const {
        constexpr std::uint32_t ejecutable = 0x20000000;
        return (lee<std::uint32_t>(seccion_de(rva) + 36) & ejecutable) != 0;
    }

    std::string bytes_;
    std::uint16_t maquina_;
    std::size_t directorios_;
    std::size_t secciones_;
    std::uint32_t num_secciones_;
};

}  // namespace dll
