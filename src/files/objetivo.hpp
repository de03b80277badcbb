// What a deletion acts on: a file or a directory, reached by its path, which is fixed, or through the directory that
// holds it, which is open. The careful way of deleting (look, unprotect, retry, ask) is the same for both.
#pragma once

#include "companions/directorio_abierto.hpp"
#include "companions/lmlongpath.hpp"

namespace interno {

class objetivo {
public:
    virtual desenlace borra() = 0;
    virtual existencia mira() = 0;
    // Sets (`modo_lectura`) or clears (`modo_escritura`) the read-only mark.
    virtual bool protege(int modo) = 0;
    // The path as the caller knows it: for messages, reports and the host's callback.
    virtual const wchar_t* texto() = 0;

    objetivo(const objetivo&) = delete;
    objetivo& operator=(const objetivo&) = delete;

protected:
    objetivo() noexcept = default;
    ~objetivo() = default;
};

class objetivo_por_ruta final : public objetivo {
public:
    // A file or a directory: which call deletes it.
    objetivo_por_ruta(const ruta_fijada& ruta, desenlace (*con)(const ruta_fijada&) noexcept) noexcept
        : ruta_(ruta), borra_(con) {}

    desenlace borra() override { return borra_(ruta_); }
    existencia mira() override { return i_existencia(ruta_); }
    bool protege(int modo) override { return lmlongpath_wchmod(ruta_, modo); }
    const wchar_t* texto() override { return ruta_.dada(); }

private:
    const ruta_fijada& ruta_;
    desenlace (*borra_)(const ruta_fijada&) noexcept;
};

// An entry of an open directory; its name is kept elsewhere, terminated.
class objetivo_en_directorio : public objetivo {
public:
    objetivo_en_directorio(directorio_abierto& directorio, const entrada_leida& entrada) noexcept
        : directorio_(directorio), entrada_(entrada) {}

    desenlace borra() override {
        const DWORD codigo = directorio_.borra(entrada_);
        const bool es_otra_falta = i_dice_que_falta(codigo) && !i_dice_que_se_ha_ido(codigo);
        return {codigo == ERROR_SUCCESS, es_otra_falta ? DWORD{ERROR_CANT_ACCESS_FILE} : codigo};
    }
    existencia mira() override { return directorio_.mira(entrada_); }
    bool protege(int modo) override {
        const existencia antes = mira();
        return antes.hay() &&
               directorio_.pon_atributos(entrada_, i_con_proteccion(antes.atributos, modo)) == ERROR_SUCCESS;
    }
    // GCOVR_EXCL_START: nobody is told of an entry that has no tree around it
    const wchar_t* texto() override { return entrada_.nombre.data(); }
    // GCOVR_EXCL_STOP

protected:
    directorio_abierto& directorio_;
    const entrada_leida entrada_;
};

}  // namespace interno
