// Long work with a progress line over it, and Ctrl-C as a wish to stop.
#pragma once

#include <functional>
#include <string>

namespace mando {

// Does the work, on a thread of its own when a person is looking at a terminal, where `texto` (given the
// seconds gone by) is shown after the first moments and then a few times a second.
void con_progreso(const std::function<void()>& trabajo, const std::function<std::wstring(unsigned)>& texto);

// From here on Ctrl-C ends the program with exit code 1.
void atiende_interrupciones();

// But while this object lives it sets the flag to 0 instead.
class interruptor {
public:
    explicit interruptor(unsigned short& continuar);
    ~interruptor();
    interruptor(const interruptor&) = delete;
    interruptor& operator=(const interruptor&) = delete;
};

}  // namespace mando
