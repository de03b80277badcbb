// The real side of the sequences: a drive of their own (`Q:`, also the share `\\srv\rec`) with a directory beside it that
// only links reach, another process that holds files, everything that the library tells its host in the order in which
// it tells it, and a look at the disk that passes by Wine. Under Wine only: drive, links and looks are made by calls of
// the Linux kernel (`hay()` says whether that can be done).
#pragma once

#include <memory>

#include "apoyo/hijo.hpp"
#include "estado/reglas.hpp"

namespace estado {

// Calls of the Linux kernel, which programs under Wine 8 may make; each answers a number below 0 when it fails.
namespace nucleo {
long long llama(long long numero, long long a, long long b, long long c = 0, long long d = 0);
bool hay();  // whether they reach the kernel
}  // namespace nucleo

struct entrada_real {
    std::string ruta;  // from the top: "dentro/a/f"
    char tipo;         // 'd', 'f', 'l'
    std::size_t bytes = 0;
    bool solo_lectura = false;
    long long fecha = 0;
};

class campo {
public:
    campo();
    ~campo();
    campo(const campo&) = delete;
    campo& operator=(const campo&) = delete;

    // Why no sequence can be run here; empty when one can.
    const std::string& por_que_no() const { return por_que_no_; }

    // An empty drive, and outside what always stands there.
    void empieza(reglas& r);
    // What the host was told since the last call.
    std::vector<std::string> toma_sucesos();
    // The first difference between the disk and the model, "" when there is none.
    std::string diferencia(reglas& r);

    // All that the disk holds, in the order of the names, and all that the model thinks it does.
    std::vector<entrada_real> entradas() const;
    static std::vector<entrada_real> pensadas(reglas& r);
    // Makes the model's tree that of the disk: after calls of which the model cannot know how far they came.
    static void aprende(reglas& r, volumen anterior, const std::vector<entrada_real>& disco);

    // Things that happen to the disk beside the library.
    void pon_fichero(const partes& donde, std::size_t bytes, bool solo_lectura);
    void pon_directorio(const partes& donde);
    void pon_enlace(const partes& donde, const partes& destino);
    void oculta(const texto_w& ruta);
    bool sujeta(const texto_w& ruta, unsigned modo);
    void suelta();

    // How the host answers.
    unsigned si = 0;
    entretanto al_preguntar = entretanto::nada;
    unsigned short* seguir = nullptr;
    unsigned preguntas = 0;
    std::vector<std::string> sucesos;

    static campo* actual();

private:
    struct otro;
    std::string i_ruta(const partes& donde) const { return cima_ + "/dentro" + i_cola(donde); }
    static std::string i_cola(const partes& donde);
    static texto_w i_del_entorno(const wchar_t* nombre);
    void i_repon_entorno() const;
    void i_mira(const std::string& ruta, std::vector<entrada_real>& vistas) const;
    void i_vacia(const std::string& ruta) const;

    // There is one drive Q: for all programs.
    const HANDLE llave_ = ::CreateMutexW(nullptr, FALSE, L"lumodir estado: the drive");
    const std::vector<std::pair<const wchar_t*, texto_w>> entorno_ = {{L"PATH", i_del_entorno(L"PATH")},
                                                                      {L"TMP", i_del_entorno(L"TMP")}};
    std::string por_que_no_;
    std::string cima_;      // the directory on the Unix side
    std::string unidades_;  // where Wine's drives are
    std::unique_ptr<otro> otro_;
};

}  // namespace estado
