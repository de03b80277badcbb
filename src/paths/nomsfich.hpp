// File-name records: one file name, without directory, as two lower-case parts in 8-bit text.
//
// Promises: every record that a function gives has both its strings, whatever was handed in; broken parts are
// reported each time a record is built, and kept.
// Cannot promise: to notice a control character alone: only a text with one of < > : " | \ / * ? is looked at
// character by character.
// Checked by tests/paths/nomsfich_test.cpp, also against a naive model over every short name.
#pragma once

#include "companions/cadena.hpp"
#include "nomsfich.h"

namespace lumodir {

// Move-only owner of a record for work inside the library.
class registro_nomsfich {
public:
    explicit registro_nomsfich(Nomsfich* registro) noexcept : registro_(registro) {}
    registro_nomsfich(registro_nomsfich&& otro) noexcept : registro_(otro.suelta()) {}
    registro_nomsfich& operator=(registro_nomsfich&&) = delete;
    ~registro_nomsfich() {
        if (registro_ != nullptr) {
            nomsfich_destruye(&registro_);
        }
    }

    const Nomsfich* get() const noexcept { return registro_; }
    vista_a nombre_base() const noexcept { return a_vista<char>(registro_->nombre_base); }
    vista_a extension() const noexcept { return a_vista<char>(registro_->extension); }
    Nomsfich* suelta() noexcept {
        Nomsfich* registro = registro_;
        registro_ = nullptr;
        return registro;
    }

private:
    Nomsfich* registro_;
};

// A bare file name cut at its last point.
registro_nomsfich i_crea_nomsfich(vista_a nombre);

}  // namespace lumodir
