// Long work with a progress line over it, and Ctrl-C as a wish to stop.
//
// Promises: Ctrl-C is answered at once. Work that can be stopped stops after the entry at hand; other work ends with the
// program, which first says what has been done. A second Ctrl-C always ends the program. When the window is closed, the
// program waits for the entry at hand as long as the system allows.
// Checked by tests/cli.
#pragma once

#include <functional>
#include <string>

namespace mando {

// Does the work. When a person is looking at a terminal, it runs on a thread of its own, and `texto` (which is given the
// seconds gone by) is shown after the first moments and then a few times a second.
void con_progreso(const std::function<void()>& trabajo, const std::function<std::wstring(unsigned)>& texto);

// ", about 12 s left", from how much of the work is done (0 to 1); nothing while that would be a guess.
std::wstring lo_que_falta(double parte_hecha, unsigned segundos);

// From here on Ctrl-C ends the program, with the exit code that Windows has for it.
void atiende_interrupciones();
constexpr int acabado_por_control_c = static_cast<int>(0xC000013A);

// While this object lives, Ctrl-C is only a wish: the library's flag, when there is one, is set to 0, and
// interrumpido() answers yes.
class interruptor {
public:
    explicit interruptor(unsigned short* continuar = nullptr);
    ~interruptor();
    interruptor(const interruptor&) = delete;
    interruptor& operator=(const interruptor&) = delete;
};
bool interrumpido();

// What is said when Ctrl-C ends the program while this object lives.
class despedida {
public:
    explicit despedida(std::function<std::wstring()> que_se_hizo);
    ~despedida();
    despedida(const despedida&) = delete;
    despedida& operator=(const despedida&) = delete;
};

}  // namespace mando
