// The texts of the message catalogue, and what makes message records out of them.
//
// Promises, checked while this file compiles: every message has a text in the 14 languages that must have
// one; the "<id>" in front of each text is written by the compiler from the number of the message; no text
// has other placeholders, or another order of them, than the Spanish one.
// Cannot promise: the order of the arguments inside a sentence. Formatting knows no positions, so a
// translation has to be worded in such a way that its placeholders follow the Spanish order.
//
// A new message is one block and a line in the list of the header. A new language is a slot in
// companions/registro_mensaje.hpp, its name below, and a line per block; CONTRIBUTING.md has the whole list.
//
// Checked by tests/frame/catalogo_test.cpp.

#include "frame/catalogo.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "companions/texto.hpp"

namespace interno {

namespace {

// ---- the languages that every message has a text in

constexpr ranura_idioma espanol = ranura_espanol;
constexpr ranura_idioma ingles = ranura_ingles;
constexpr ranura_idioma frances = ranura_frances;
constexpr ranura_idioma brasil = ranura_portugues_brasil;
constexpr ranura_idioma portugal = ranura_portugues_portugal;
constexpr ranura_idioma catalan = ranura_catalan;
constexpr ranura_idioma italiano = ranura_italiano;
constexpr ranura_idioma rumano = ranura_rumano;
constexpr ranura_idioma chino = ranura_chino_simplificado;
constexpr ranura_idioma aleman = ranura_aleman;
constexpr ranura_idioma ruso = ranura_ruso;
constexpr ranura_idioma polaco = ranura_polaco;
constexpr ranura_idioma turco = ranura_turco;
constexpr ranura_idioma japones = ranura_japones;

// In the order in which the blocks have them.
constexpr ranura_idioma idiomas[] = {espanol, ingles, frances, brasil, portugal, catalan, italiano,
                                     rumano,  chino,  aleman,  ruso,   polaco,   turco,   japones};

// ---- a message as it is written down below

struct texto_propio {
    ranura_idioma ranura;
    vista_w texto;  // without the "<id>"
};

struct datos_mensaje {
    std::uint32_t id;
    const char* fichero_mensajes;
    std::uint32_t linea;
    texto_propio textos[std::size(idiomas)];

    constexpr vista_w en_espanol() const { return textos[0].texto; }
};

constexpr const char* lumodir_msg = "lumodir.msg";
constexpr const char* ficheros_msg = "ficheros.msg";
constexpr const char* timefich_msg = "timefich.msg";

// ---- reading the texts while compiling

consteval bool i_textos_completos(const datos_mensaje& datos) {
    return std::equal(std::begin(datos.textos), std::end(datos.textos), std::begin(idiomas),
                      [](const texto_propio& propio, ranura_idioma idioma) {
                          return propio.ranura == idioma && !propio.texto.empty();
                      });
}

// The placeholders of a text in their order, as the digits of a number in base 4: %s is 1, %ld is 2.
constexpr std::uint32_t marcadores_incorrectos = 0xFFFFFFFF;

constexpr std::uint32_t i_marcadores(vista_w texto) {
    std::uint32_t marcadores = 0;
    for (std::size_t i = texto.find(L'%'); i != vista_w::npos; i = texto.find(L'%', i + 1)) {
        if (empieza_por(texto.substr(i), L"%s")) {
            marcadores = marcadores * 4 + 1;
        } else if (empieza_por(texto.substr(i), L"%ld")) {
            marcadores = marcadores * 4 + 2;
        } else {
            return marcadores_incorrectos;
        }
    }
    return marcadores;
}

consteval bool i_mismos_marcadores(const datos_mensaje& datos) {
    const std::uint32_t esperados = i_marcadores(datos.en_espanol());
    return esperados != marcadores_incorrectos &&
           std::all_of(std::begin(datos.textos), std::end(datos.textos),
                       [=](const texto_propio& propio) { return i_marcadores(propio.texto) == esperados; });
}

// The regional variants of Spanish say "archivo" where Spain says "fichero", and differ in nothing else: their texts are
// made here. One without that word is shared.
constexpr vista_w fichero = L"fichero";
constexpr vista_w archivo = L"archivo";
static_assert(fichero.size() == archivo.size());

consteval bool i_dice_fichero(const datos_mensaje& datos) {
    return datos.en_espanol().find(fichero) != vista_w::npos;
}

// The second variant keeps "fichero" in the two messages about the read-only protection: a deliberate exception, its
// texts stay as they are known.
consteval bool i_variante_2_conserva_fichero(std::uint32_t id) {
    return id == 53961 || id == 53962;
}

// ---- the texts with their prefix, composed while compiling

constexpr std::uint32_t i_longitud_prefijo(std::uint32_t id) {
    std::uint32_t longitud = 2;  // the angle brackets
    for (; id != 0; id /= 10) {
        ++longitud;
    }
    return longitud;
}

consteval std::size_t i_longitud_total(const datos_mensaje& datos) {
    const std::size_t prefijo_y_final = i_longitud_prefijo(datos.id) + 1;
    std::size_t total = i_dice_fichero(datos) ? prefijo_y_final + datos.en_espanol().size() : 0;
    for (const texto_propio& propio : datos.textos) {
        total += prefijo_y_final + propio.texto.size();
    }
    return total;
}

constexpr void i_escribe_prefijo(wchar_t* destino, std::uint32_t id) {
    std::uint32_t posicion = i_longitud_prefijo(id);
    destino[--posicion] = L'>';
    for (; id != 0; id /= 10) {
        destino[--posicion] = static_cast<wchar_t>(L'0' + id % 10);
    }
    destino[--posicion] = L'<';
}

// Places instead of pointers, because not every build (the sanitizers' one) lets a constant expression
// compare the address of an element with NULL.
constexpr std::size_t sin_texto_propio = static_cast<std::size_t>(-1);
using comienzos = std::array<std::size_t, num_ranuras_idioma>;

template <std::size_t longitud>
struct textos_con_prefijo {
    std::array<wchar_t, longitud> caracteres{};  // all texts of a message, one after the other
    comienzos comienzo{};                        // by slot: where in `caracteres` its text begins
};

template <std::size_t longitud>
consteval textos_con_prefijo<longitud> i_compone(const datos_mensaje& datos) {
    textos_con_prefijo<longitud> compuestos;
    compuestos.comienzo.fill(sin_texto_propio);
    std::size_t posicion = 0;
    const auto anade = [&](vista_w texto) {
        const std::size_t comienzo = posicion;
        i_escribe_prefijo(compuestos.caracteres.data() + comienzo, datos.id);
        posicion += i_longitud_prefijo(datos.id);
        std::copy(texto.begin(), texto.end(), compuestos.caracteres.begin() + posicion);
        posicion += texto.size() + 1;  // the terminator is there already
        return comienzo;
    };
    for (const texto_propio& propio : datos.textos) {
        compuestos.comienzo[propio.ranura] = anade(propio.texto);
    }
    if (i_dice_fichero(datos)) {
        const vista_w de_espana = datos.en_espanol();
        const std::size_t comienzo = anade(de_espana);
        const std::size_t tras_prefijo = comienzo + i_longitud_prefijo(datos.id);
        for (std::size_t i = de_espana.find(fichero); i != vista_w::npos;
             i = de_espana.find(fichero, i + 1)) {
            std::copy(archivo.begin(), archivo.end(), compuestos.caracteres.begin() + tras_prefijo + i);
        }
        compuestos.comienzo[ranura_espanol_regional_1] = comienzo;
        compuestos.comienzo[ranura_espanol_regional_3] = comienzo;
        if (!i_variante_2_conserva_fichero(datos.id)) {
            compuestos.comienzo[ranura_espanol_regional_2] = comienzo;
        }
    }
    return compuestos;
}

// ---- filling a record

void i_rellena(RegistroMensaje* registro, const char* fichero_mensajes, std::uint32_t linea,
               std::uint32_t longitud_prefijo, const wchar_t* caracteres, const comienzos& comienzo) {
    registro->fichero_mensajes = fichero_mensajes;
    registro->linea = linea;
    registro->longitud_prefijo = longitud_prefijo;
    for (std::uint32_t ranura = 0; ranura < num_ranuras_idioma; ++ranura) {
        const bool tiene_propio = comienzo[ranura] != sin_texto_propio;
        registro->texto[ranura] = caracteres + comienzo[tiene_propio ? ranura : ranura_de_respaldo(ranura)];
    }
    registro->fin = nullptr;
}

template <const datos_mensaje& datos>
void i_construye(RegistroMensaje* registro) {
    static_assert(i_textos_completos(datos), "a translation is missing, empty or out of order");
    static_assert(i_mismos_marcadores(datos), "placeholders differ from the Spanish text");
    // Constants of their own, so that an optimized binary holds no data without prefixes.
    static constexpr auto compuestos = i_compone<i_longitud_total(datos)>(datos);
    constexpr const char* fichero_mensajes = datos.fichero_mensajes;
    constexpr std::uint32_t linea = datos.linea;
    constexpr std::uint32_t longitud_prefijo = i_longitud_prefijo(datos.id);
    i_rellena(registro, fichero_mensajes, linea, longitud_prefijo, compuestos.caracteres.data(),
              compuestos.comienzo);
}

}  // namespace

// ---- the messages, by ascending id
//
// File-name quotes stay straight ('%s') in every language, so that a name with typographic quotes of its
// own can be told from the text around it. A text ends in a full stop exactly when the English one does:
// to some of those without one the caller adds further lines.
//
// The formatter stays out: the languages aligned, one below the other, is what lets a translator compare.

// clang-format off

constexpr datos_mensaje m_31827_no_existe_directorio{
    .id = 31827, .fichero_mensajes = lumodir_msg, .linea = 142,
    .textos = {
        {espanol,     L"No existe el directorio '%s'."},
        {ingles,      L"Directory '%s' does not exist."},
        {frances,     L"Le répertoire '%s' n'existe pas."},
        {brasil,      L"O diretório '%s' não existe."},
        {portugal,    L"O diretório '%s' não existe."},
        {catalan,     L"El directori '%s' no existeix."},
        {italiano,    L"La directory '%s' non esiste."},
        {rumano,      L"Directorul '%s' nu există."},
        {chino,       L"目录 '%s' 不存在。"},
        {aleman,      L"Das Verzeichnis '%s' ist nicht vorhanden."},
        {ruso,        L"Каталог '%s' не существует."},
        {polaco,      L"Katalog '%s' nie istnieje."},
        {turco,       L"'%s' dizini mevcut değil."},
        {japones,     L"ディレクトリ '%s' は存在しません。"},
    },
};

constexpr datos_mensaje m_53948_no_se_puede_crear_directorio{
    .id = 53948, .fichero_mensajes = lumodir_msg, .linea = 4,
    .textos = {
        {espanol,     L"No se puede crear el directorio '%s'"},
        {ingles,      L"Cannot create the directory '%s'"},
        {frances,     L"Impossible de créer le répertoire '%s'"},
        {brasil,      L"Não é possível criar o diretório '%s'"},
        {portugal,    L"Não é possível criar o diretório '%s'"},
        {catalan,     L"No es pot crear el directori '%s'"},
        {italiano,    L"Impossibile creare la directory '%s'"},
        {rumano,      L"Nu se poate crea directorul '%s'"},
        {chino,       L"无法创建目录 '%s'"},
        {aleman,      L"Das Verzeichnis '%s' kann nicht erstellt werden"},
        {ruso,        L"Не удается создать каталог '%s'"},
        {polaco,      L"Nie można utworzyć katalogu '%s'"},
        {turco,       L"'%s' dizini oluşturulamıyor"},
        {japones,     L"ディレクトリ '%s' を作成できません"},
    },
};

constexpr datos_mensaje m_53949_caracteres_no_validos_en_nombre{
    .id = 53949, .fichero_mensajes = lumodir_msg, .linea = 50,
    .textos = {
        {espanol,     L"Existen caracteres no válidos en el nombre '%s'"},
        {ingles,      L"There are invalid characters in the name '%s'"},
        {frances,     L"Le nom '%s' contient des caractères non valides"},
        {brasil,      L"Há caracteres inválidos no nome '%s'"},
        {portugal,    L"Existem carateres inválidos no nome '%s'"},
        {catalan,     L"Hi ha caràcters no vàlids al nom '%s'"},
        {italiano,    L"Il nome '%s' contiene caratteri non validi"},
        {rumano,      L"Numele '%s' conține caractere nevalide"},
        {chino,       L"名称 '%s' 包含无效字符"},
        {aleman,      L"Der Name '%s' enthält ungültige Zeichen"},
        {ruso,        L"Имя '%s' содержит недопустимые символы"},
        {polaco,      L"Nazwa '%s' zawiera nieprawidłowe znaki"},
        {turco,       L"'%s' adı geçersiz karakterler içeriyor"},
        {japones,     L"名前 '%s' に無効な文字が含まれています"},
    },
};

constexpr datos_mensaje m_53950_no_se_puede_borrar_fichero_que_no_existe{
    .id = 53950, .fichero_mensajes = lumodir_msg, .linea = 180,
    .textos = {
        {espanol,     L"No se puede borrar el fichero '%s' (no existe)"},
        {ingles,      L"Cannot delete the file '%s' (it does not exist)"},
        {frances,     L"Impossible de supprimer le fichier '%s' (il n'existe pas)"},
        {brasil,      L"Não é possível excluir o arquivo '%s' (ele não existe)"},
        {portugal,    L"Não é possível eliminar o ficheiro '%s' (não existe)"},
        {catalan,     L"No es pot suprimir el fitxer '%s' (no existeix)"},
        {italiano,    L"Impossibile eliminare il file '%s' (non esiste)"},
        {rumano,      L"Nu se poate șterge fișierul '%s' (nu există)"},
        {chino,       L"无法删除文件 '%s'（文件不存在）"},
        {aleman,      L"Die Datei '%s' kann nicht gelöscht werden (sie ist nicht vorhanden)"},
        {ruso,        L"Не удается удалить файл '%s' (он не существует)"},
        {polaco,      L"Nie można usunąć pliku '%s' (plik nie istnieje)"},
        {turco,       L"'%s' dosyası silinemiyor (dosya mevcut değil)"},
        {japones,     L"ファイル '%s' を削除できません (ファイルが存在しません)"},
    },
};

// Shares its id with the next message on purpose.
constexpr datos_mensaje m_53951_no_se_puede_borrar_fichero{
    .id = 53951, .fichero_mensajes = lumodir_msg, .linea = 228,
    .textos = {
        {espanol,     L"No se puede borrar el fichero '%s'"},
        {ingles,      L"Cannot delete the file '%s'"},
        {frances,     L"Impossible de supprimer le fichier '%s'"},
        {brasil,      L"Não é possível excluir o arquivo '%s'"},
        {portugal,    L"Não é possível eliminar o ficheiro '%s'"},
        {catalan,     L"No es pot suprimir el fitxer '%s'"},
        {italiano,    L"Impossibile eliminare il file '%s'"},
        {rumano,      L"Nu se poate șterge fișierul '%s'"},
        {chino,       L"无法删除文件 '%s'"},
        {aleman,      L"Die Datei '%s' kann nicht gelöscht werden"},
        {ruso,        L"Не удается удалить файл '%s'"},
        {polaco,      L"Nie można usunąć pliku '%s'"},
        {turco,       L"'%s' dosyası silinemiyor"},
        {japones,     L"ファイル '%s' を削除できません"},
    },
};

constexpr datos_mensaje m_53951_no_se_puede_renombrar{
    .id = 53951, .fichero_mensajes = lumodir_msg, .linea = 345,
    .textos = {
        {espanol,     L"No se puede renombrar el fichero"},
        {ingles,      L"The file cannot be renamed"},
        {frances,     L"Impossible de renommer le fichier"},
        {brasil,      L"Não é possível renomear o arquivo"},
        {portugal,    L"Não é possível mudar o nome do ficheiro"},
        {catalan,     L"No es pot canviar el nom del fitxer"},
        {italiano,    L"Impossibile rinominare il file"},
        {rumano,      L"Nu se poate redenumi fișierul"},
        {chino,       L"无法重命名文件"},
        {aleman,      L"Die Datei kann nicht umbenannt werden"},
        {ruso,        L"Не удается переименовать файл"},
        {polaco,      L"Nie można zmienić nazwy pliku"},
        {turco,       L"Dosya yeniden adlandırılamıyor"},
        {japones,     L"ファイルの名前を変更できません"},
    },
};

constexpr datos_mensaje m_53952_nombre_directorio_incorrecto{
    .id = 53952, .fichero_mensajes = lumodir_msg, .linea = 375,
    .textos = {
        {espanol,     L"El nombre del directorio '%s' es incorrecto"},
        {ingles,      L"The directory name '%s' is incorrect"},
        {frances,     L"Le nom de répertoire '%s' est incorrect"},
        {brasil,      L"O nome do diretório '%s' está incorreto"},
        {portugal,    L"O nome do diretório '%s' está incorreto"},
        {catalan,     L"El nom del directori '%s' és incorrecte"},
        {italiano,    L"Il nome della directory '%s' non è corretto"},
        {rumano,      L"Numele directorului '%s' este incorect"},
        {chino,       L"目录名 '%s' 不正确"},
        {aleman,      L"Der Verzeichnisname '%s' ist nicht korrekt"},
        {ruso,        L"Имя каталога '%s' задано неверно"},
        {polaco,      L"Nazwa katalogu '%s' jest nieprawidłowa"},
        {turco,       L"'%s' dizin adı yanlış"},
        {japones,     L"ディレクトリ名 '%s' が正しくありません"},
    },
};

constexpr datos_mensaje m_53953_no_se_puede_borrar_directorio_que_no_existe{
    .id = 53953, .fichero_mensajes = lumodir_msg, .linea = 421,
    .textos = {
        {espanol,     L"No se puede borrar el directorio '%s' (no existe)"},
        {ingles,      L"Cannot delete the directory '%s' (it does not exist)"},
        {frances,     L"Impossible de supprimer le répertoire '%s' (il n'existe pas)"},
        {brasil,      L"Não é possível excluir o diretório '%s' (ele não existe)"},
        {portugal,    L"Não é possível eliminar o diretório '%s' (não existe)"},
        {catalan,     L"No es pot suprimir el directori '%s' (no existeix)"},
        {italiano,    L"Impossibile eliminare la directory '%s' (non esiste)"},
        {rumano,      L"Nu se poate șterge directorul '%s' (nu există)"},
        {chino,       L"无法删除目录 '%s'（目录不存在）"},
        {aleman,      L"Das Verzeichnis '%s' kann nicht gelöscht werden (es ist nicht vorhanden)"},
        {ruso,        L"Не удается удалить каталог '%s' (он не существует)"},
        {polaco,      L"Nie można usunąć katalogu '%s' (katalog nie istnieje)"},
        {turco,       L"'%s' dizini silinemiyor (dizin mevcut değil)"},
        {japones,     L"ディレクトリ '%s' を削除できません (ディレクトリが存在しません)"},
    },
};

constexpr datos_mensaje m_53954_no_se_puede_borrar_directorio{
    .id = 53954, .fichero_mensajes = lumodir_msg, .linea = 469,
    .textos = {
        {espanol,     L"No se puede borrar el directorio '%s'"},
        {ingles,      L"Unable to delete the directory '%s'"},
        {frances,     L"Impossible de supprimer le répertoire '%s'"},
        {brasil,      L"Não é possível excluir o diretório '%s'"},
        {portugal,    L"Não é possível eliminar o diretório '%s'"},
        {catalan,     L"No es pot suprimir el directori '%s'"},
        {italiano,    L"Impossibile eliminare la directory '%s'"},
        {rumano,      L"Nu se poate șterge directorul '%s'"},
        {chino,       L"无法删除目录 '%s'"},
        {aleman,      L"Das Verzeichnis '%s' kann nicht gelöscht werden"},
        {ruso,        L"Не удается удалить каталог '%s'"},
        {polaco,      L"Nie można usunąć katalogu '%s'"},
        {turco,       L"'%s' dizini silinemiyor"},
        {japones,     L"ディレクトリ '%s' を削除できません"},
    },
};

constexpr datos_mensaje m_53955_fichero_no_correcto{
    .id = 53955, .fichero_mensajes = lumodir_msg, .linea = 517,
    .textos = {
        {espanol,     L"El fichero '%s' no es correcto"},
        {ingles,      L"The file '%s' is not correct"},
        {frances,     L"Le nom de fichier '%s' est incorrect"},
        {brasil,      L"O nome do arquivo '%s' está incorreto"},
        {portugal,    L"O nome do ficheiro '%s' está incorreto"},
        {catalan,     L"El nom del fitxer '%s' és incorrecte"},
        {italiano,    L"Il nome del file '%s' non è corretto"},
        {rumano,      L"Numele fișierului '%s' este incorect"},
        {chino,       L"文件名 '%s' 不正确"},
        {aleman,      L"Der Dateiname '%s' ist nicht korrekt"},
        {ruso,        L"Файл '%s' задан неверно"},
        {polaco,      L"Nazwa pliku '%s' jest nieprawidłowa"},
        {turco,       L"'%s' dosya adı yanlış"},
        {japones,     L"ファイル名 '%s' が正しくありません"},
    },
};

constexpr datos_mensaje m_53957_punto_al_principio_o_final{
    .id = 53957, .fichero_mensajes = lumodir_msg, .linea = 563,
    .textos = {
        {espanol,     L"Se encontró un punto al principio o final del path: '%s'"},
        {ingles,      L"A point was found at beginning or end of the path: '%s'"},
        {frances,     L"Un point a été trouvé au début ou à la fin du chemin d'accès\u00A0: '%s'"},
        {brasil,      L"Foi encontrado um ponto no início ou no final do caminho: '%s'"},
        {portugal,    L"Foi encontrado um ponto no início ou no fim do caminho: '%s'"},
        {catalan,     L"S'ha trobat un punt al principi o al final del camí d'accés: '%s'"},
        {italiano,    L"È stato rilevato un punto all'inizio o alla fine del percorso: '%s'"},
        {rumano,      L"S-a găsit un punct la începutul sau la sfârșitul căii: '%s'"},
        {chino,       L"路径的开头或结尾有句点：'%s'"},
        {aleman,      L"Am Anfang oder am Ende des Pfads wurde ein Punkt gefunden: '%s'"},
        {ruso,        L"В начале или в конце пути обнаружена точка: '%s'"},
        {polaco,      L"Na początku lub na końcu ścieżki znaleziono kropkę: '%s'"},
        {turco,       L"Yolun başında veya sonunda nokta bulundu: '%s'"},
        {japones,     L"パスの先頭または末尾にピリオドが見つかりました: '%s'"},
    },
};

constexpr datos_mensaje m_53958_unidad_debe_ser_letra{
    .id = 53958, .fichero_mensajes = lumodir_msg, .linea = 612,
    .textos = {
        {espanol,     L"El nombre de la unidad debe ser una letra."},
        {ingles,      L"The name of the disk drive must be a letter."},
        {frances,     L"Le nom du lecteur de disque doit être une lettre."},
        {brasil,      L"O nome da unidade de disco deve ser uma letra."},
        {portugal,    L"O nome da unidade de disco tem de ser uma letra."},
        {catalan,     L"El nom de la unitat de disc ha de ser una lletra."},
        {italiano,    L"Il nome dell'unità disco deve essere una lettera."},
        {rumano,      L"Numele unității de disc trebuie să fie o literă."},
        {chino,       L"磁盘驱动器的名称必须是字母。"},
        {aleman,      L"Der Name des Laufwerks muss ein Buchstabe sein."},
        {ruso,        L"Имя диска должно быть буквой."},
        {polaco,      L"Nazwa dysku musi być literą."},
        {turco,       L"Disk sürücüsünün adı bir harf olmalıdır."},
        {japones,     L"ディスク ドライブの名前は英字でなければなりません。"},
    },
};

constexpr datos_mensaje m_53959_unidad_de_red_incompleta{
    .id = 53959, .fichero_mensajes = lumodir_msg, .linea = 659,
    .textos = {
        {espanol,     L"El nombre de la Unidad de Red está incompleto."},
        {ingles,      L"The name of the network drive is incomplete."},
        {frances,     L"Le nom du lecteur réseau est incomplet."},
        {brasil,      L"O nome da unidade de rede está incompleto."},
        {portugal,    L"O nome da unidade de rede está incompleto."},
        {catalan,     L"El nom de la unitat de xarxa és incomplet."},
        {italiano,    L"Il nome dell'unità di rete è incompleto."},
        {rumano,      L"Numele unității de rețea este incomplet."},
        {chino,       L"网络驱动器的名称不完整。"},
        {aleman,      L"Der Name des Netzlaufwerks ist unvollständig."},
        {ruso,        L"Имя сетевого диска указано не полностью."},
        {polaco,      L"Nazwa dysku sieciowego jest niepełna."},
        {turco,       L"Ağ sürücüsünün adı eksik."},
        {japones,     L"ネットワーク ドライブの名前が不完全です。"},
    },
};

constexpr datos_mensaje m_53960_sin_nombre_de_directorio{
    .id = 53960, .fichero_mensajes = lumodir_msg, .linea = 706,
    .textos = {
        {espanol,     L"No ha especificado ningún nombre de directorio"},
        {ingles,      L"You have not specified any directory name"},
        {frances,     L"Vous n'avez spécifié aucun nom de répertoire"},
        {brasil,      L"Você não especificou nenhum nome de diretório"},
        {portugal,    L"Não especificou nenhum nome de diretório"},
        {catalan,     L"No heu especificat cap nom de directori"},
        {italiano,    L"Non è stato specificato alcun nome di directory"},
        {rumano,      L"Nu ați specificat niciun nume de director"},
        {chino,       L"您没有指定目录名"},
        {aleman,      L"Sie haben keinen Verzeichnisnamen angegeben"},
        {ruso,        L"Не указано имя каталога"},
        {polaco,      L"Nie określono nazwy katalogu"},
        {turco,       L"Herhangi bir dizin adı belirtmediniz"},
        {japones,     L"ディレクトリ名が指定されていません"},
    },
};

// "Locking" is setting the read-only protection, hence write protection in the other languages.
constexpr datos_mensaje m_53961_no_se_puede_proteger_fichero{
    .id = 53961, .fichero_mensajes = lumodir_msg, .linea = 783,
    .textos = {
        {espanol,     L"No se puede proteger el fichero '%s'"},
        {ingles,      L"It is not possible to lock the file '%s'"},
        {frances,     L"Impossible de protéger le fichier '%s' en écriture"},
        {brasil,      L"Não é possível proteger o arquivo '%s' contra gravação"},
        {portugal,    L"Não é possível proteger o ficheiro '%s' contra escrita"},
        {catalan,     L"No es pot protegir el fitxer '%s' contra escriptura"},
        {italiano,    L"Impossibile proteggere il file '%s' dalla scrittura"},
        {rumano,      L"Nu se poate proteja fișierul '%s' la scriere"},
        {chino,       L"无法为文件 '%s' 设置写保护"},
        {aleman,      L"Die Datei '%s' kann nicht mit einem Schreibschutz versehen werden"},
        {ruso,        L"Не удается защитить файл '%s' от записи"},
        {polaco,      L"Nie można zabezpieczyć pliku '%s' przed zapisem"},
        {turco,       L"'%s' dosyası yazmaya karşı korunamıyor"},
        {japones,     L"ファイル '%s' を書き込み禁止にできません"},
    },
};

constexpr datos_mensaje m_53962_no_se_puede_desproteger_fichero{
    .id = 53962, .fichero_mensajes = lumodir_msg, .linea = 821,
    .textos = {
        {espanol,     L"No se puede desproteger el fichero '%s'"},
        {ingles,      L"It is not possible to unlock the file '%s'"},
        {frances,     L"Impossible de retirer la protection en écriture du fichier '%s'"},
        {brasil,      L"Não é possível remover a proteção contra gravação do arquivo '%s'"},
        {portugal,    L"Não é possível remover a proteção contra escrita do ficheiro '%s'"},
        {catalan,     L"No es pot treure la protecció contra escriptura del fitxer '%s'"},
        {italiano,    L"Impossibile rimuovere la protezione da scrittura del file '%s'"},
        {rumano,      L"Nu se poate elimina protecția la scriere a fișierului '%s'"},
        {chino,       L"无法取消文件 '%s' 的写保护"},
        {aleman,      L"Der Schreibschutz der Datei '%s' kann nicht aufgehoben werden"},
        {ruso,        L"Не удается снять с файла '%s' защиту от записи"},
        {polaco,      L"Nie można usunąć zabezpieczenia pliku '%s' przed zapisem"},
        {turco,       L"'%s' dosyasının yazma koruması kaldırılamıyor"},
        {japones,     L"ファイル '%s' の書き込み禁止を解除できません"},
    },
};

constexpr datos_mensaje m_53963_esperando_acceso_a_directorio{
    .id = 53963, .fichero_mensajes = lumodir_msg, .linea = 859,
    .textos = {
        {espanol,     L"Esperando acceso al directorio '%s'"},
        {ingles,      L"Waiting for access to directory '%s'"},
        {frances,     L"En attente d'accès au répertoire '%s'"},
        {brasil,      L"Aguardando acesso ao diretório '%s'"},
        {portugal,    L"A aguardar acesso ao diretório '%s'"},
        {catalan,     L"S'està esperant l'accés al directori '%s'"},
        {italiano,    L"In attesa dell'accesso alla directory '%s'"},
        {rumano,      L"Se așteaptă accesul la directorul '%s'"},
        {chino,       L"正在等待访问目录 '%s'"},
        {aleman,      L"Warten auf Zugriff auf das Verzeichnis '%s'"},
        {ruso,        L"Ожидание доступа к каталогу '%s'"},
        {polaco,      L"Oczekiwanie na dostęp do katalogu '%s'"},
        {turco,       L"'%s' dizinine erişim bekleniyor"},
        {japones,     L"ディレクトリ '%s' へのアクセスを待機しています"},
    },
};

// Shares its id with the next message on purpose: there the name stands without quotes.
constexpr datos_mensaje m_74876_no_existe_fichero{
    .id = 74876, .fichero_mensajes = lumodir_msg, .linea = 96,
    .textos = {
        {espanol,     L"No existe el fichero '%s'"},
        {ingles,      L"This file '%s' does not exist"},
        {frances,     L"Le fichier '%s' n'existe pas"},
        {brasil,      L"O arquivo '%s' não existe"},
        {portugal,    L"O ficheiro '%s' não existe"},
        {catalan,     L"El fitxer '%s' no existeix"},
        {italiano,    L"Il file '%s' non esiste"},
        {rumano,      L"Fișierul '%s' nu există"},
        {chino,       L"文件 '%s' 不存在"},
        {aleman,      L"Die Datei '%s' ist nicht vorhanden"},
        {ruso,        L"Файл '%s' не существует"},
        {polaco,      L"Plik '%s' nie istnieje"},
        {turco,       L"'%s' dosyası mevcut değil"},
        {japones,     L"ファイル '%s' は存在しません"},
    },
};

constexpr datos_mensaje m_74876_no_existe_fichero_sin_comillas{
    .id = 74876, .fichero_mensajes = ficheros_msg, .linea = 4,
    .textos = {
        {espanol,     L"No existe el fichero %s"},
        {ingles,      L"This file %s does not exist"},
        {frances,     L"Le fichier %s n'existe pas"},
        {brasil,      L"O arquivo %s não existe"},
        {portugal,    L"O ficheiro %s não existe"},
        {catalan,     L"El fitxer %s no existeix"},
        {italiano,    L"Il file %s non esiste"},
        {rumano,      L"Fișierul %s nu există"},
        {chino,       L"文件 %s 不存在"},
        {aleman,      L"Die Datei %s ist nicht vorhanden"},
        {ruso,        L"Файл %s не существует"},
        {polaco,      L"Plik %s nie istnieje"},
        {turco,       L"%s dosyası mevcut değil"},
        {japones,     L"ファイル %s は存在しません"},
    },
};

constexpr datos_mensaje m_158391_no_se_puede_abrir_para_cambiar_fecha{
    .id = 158391, .fichero_mensajes = timefich_msg, .linea = 4,
    .textos = {
        {espanol,     L"No puede abrirse el fichero '%s' para modificar su fecha."},
        {ingles,      L"The '%s' file cannot be opened to modify its date."},
        {frances,     L"Impossible d'ouvrir le fichier '%s' pour en modifier la date."},
        {brasil,      L"Não é possível abrir o arquivo '%s' para modificar a data dele."},
        {portugal,    L"Não é possível abrir o ficheiro '%s' para modificar a respetiva data."},
        {catalan,     L"No es pot obrir el fitxer '%s' per modificar-ne la data."},
        {italiano,    L"Impossibile aprire il file '%s' per modificarne la data."},
        {rumano,      L"Nu se poate deschide fișierul '%s' pentru a-i modifica data."},
        {chino,       L"无法打开文件 '%s' 以修改其日期。"},
        {aleman,      L"Die Datei '%s' kann nicht geöffnet werden, um ihr Datum zu ändern."},
        {ruso,        L"Не удается открыть файл '%s' для изменения его даты."},
        {polaco,      L"Nie można otworzyć pliku '%s' w celu zmiany jego daty."},
        {turco,       L"Tarihini değiştirmek için '%s' dosyası açılamıyor."},
        {japones,     L"ファイル '%s' を開いて日付を変更することができません。"},
    },
};

constexpr datos_mensaje m_374376_path_demasiado_largo{
    .id = 374376, .fichero_mensajes = lumodir_msg, .linea = 752,
    .textos = {
        {espanol,     L"El path '%s' supera la longitud máxima permitida (%ld)."},
        {ingles,      L"The length of path '%s' exceeds the maximum permitted length (%ld)."},
        {frances,     L"La longueur du chemin d'accès '%s' dépasse la longueur maximale autorisée (%ld)."},
        {brasil,      L"O comprimento do caminho '%s' excede o comprimento máximo permitido (%ld)."},
        {portugal,    L"O comprimento do caminho '%s' excede o comprimento máximo permitido (%ld)."},
        {catalan,     L"La longitud del camí d'accés '%s' supera la longitud màxima permesa (%ld)."},
        {italiano,    L"La lunghezza del percorso '%s' supera la lunghezza massima consentita (%ld)."},
        {rumano,      L"Lungimea căii '%s' depășește lungimea maximă permisă (%ld)."},
        {chino,       L"路径 '%s' 的长度超过了允许的最大长度（%ld）。"},
        {aleman,      L"Die Länge des Pfads '%s' überschreitet die maximal zulässige Länge (%ld)."},
        {ruso,        L"Длина пути '%s' превышает максимально допустимую (%ld)."},
        {polaco,      L"Długość ścieżki '%s' przekracza maksymalną dozwoloną długość (%ld)."},
        {turco,       L"'%s' yolunun uzunluğu, izin verilen uzunluk üst sınırını (%ld) aşıyor."},
        {japones,     L"パス '%s' の長さが、許可されている最大長 (%ld) を超えています。"},
    },
};

constexpr datos_mensaje m_385690_no_se_puede_crear_temporal{
    .id = 385690, .fichero_mensajes = lumodir_msg, .linea = 897,
    .textos = {
        {espanol,     L"Windows no permite crear un fichero temporal en el directorio establecido para "
                      L"ello (%s)."},
        {ingles,      L"Windows does not allow a temporary file to be created in the directory that has "
                      L"been established for it (%s)."},
        {frances,     L"Windows ne permet pas de créer un fichier temporaire dans le répertoire défini à "
                      L"cet effet (%s)."},
        {brasil,      L"O Windows não permite criar um arquivo temporário no diretório definido para essa "
                      L"finalidade (%s)."},
        {portugal,    L"O Windows não permite criar um ficheiro temporário no diretório definido para o "
                      L"efeito (%s)."},
        {catalan,     L"El Windows no permet crear un fitxer temporal al directori definit amb aquesta "
                      L"finalitat (%s)."},
        {italiano,    L"Windows non consente di creare un file temporaneo nella directory impostata a tale "
                      L"scopo (%s)."},
        {rumano,      L"Windows nu permite crearea unui fișier temporar în directorul stabilit în acest "
                      L"scop (%s)."},
        {chino,       L"Windows 不允许在指定的临时文件目录（%s）中创建临时文件。"},
        {aleman,      L"Windows lässt das Erstellen einer temporären Datei im dafür festgelegten "
                      L"Verzeichnis (%s) nicht zu."},
        {ruso,        L"Windows не позволяет создать временный файл в предназначенном для этого каталоге "
                      L"(%s)."},
        {polaco,      L"System Windows nie zezwala na utworzenie pliku tymczasowego w przeznaczonym do "
                      L"tego katalogu (%s)."},
        {turco,       L"Windows, geçici dosyalar için belirlenen dizinde (%s) geçici dosya oluşturulmasına "
                      L"izin vermiyor."},
        {japones,     L"一時ファイル用に設定されているディレクトリ (%s) での一時ファイルの作成が Windows に"
                      L"よって許可されていません。"},
    },
};

constexpr datos_mensaje m_385691_codigo_de_error_de_windows{
    .id = 385691, .fichero_mensajes = lumodir_msg, .linea = 934,
    .textos = {
        {espanol,     L"El código de error devuelto por Windows es '%s'."},
        {ingles,      L"The error code returned by Windows is '%s'."},
        {frances,     L"Le code d'erreur renvoyé par Windows est '%s'."},
        {brasil,      L"O código de erro retornado pelo Windows é '%s'."},
        {portugal,    L"O código de erro devolvido pelo Windows é '%s'."},
        {catalan,     L"El codi d'error retornat pel Windows és '%s'."},
        {italiano,    L"Il codice di errore restituito da Windows è '%s'."},
        {rumano,      L"Codul de eroare returnat de Windows este '%s'."},
        {chino,       L"Windows 返回的错误代码是 '%s'。"},
        {aleman,      L"Der von Windows zurückgegebene Fehlercode lautet '%s'."},
        {ruso,        L"Код ошибки, возвращенный Windows: '%s'."},
        {polaco,      L"Kod błędu zwrócony przez system Windows to '%s'."},
        {turco,       L"Windows tarafından döndürülen hata kodu: '%s'."},
        {japones,     L"Windows から返されたエラー コードは '%s' です。"},
    },
};

constexpr datos_mensaje m_385692_modificar_variable_temp{
    .id = 385692, .fichero_mensajes = lumodir_msg, .linea = 962,
    .textos = {
        {espanol,     L"Para solucionar este problema, puede modificar la variable de entorno 'TEMP' en "
                      L"Windows y establecer el directorio donde se deben crear los ficheros temporales "
                      L"del programa."},
        {ingles,      L"To solve this problem, you can modify the 'TEMP' environment variable in Windows "
                      L"and establish the directory where temporary program files should be created."},
        {frances,     L"Pour résoudre ce problème, vous pouvez modifier la variable d'environnement 'TEMP' "
                      L"dans Windows et définir le répertoire dans lequel les fichiers temporaires du "
                      L"programme doivent être créés."},
        {brasil,      L"Para resolver este problema, você pode modificar a variável de ambiente 'TEMP' no "
                      L"Windows e definir o diretório em que os arquivos temporários do programa devem ser "
                      L"criados."},
        {portugal,    L"Para resolver este problema, pode modificar a variável de ambiente 'TEMP' no "
                      L"Windows e definir o diretório onde devem ser criados os ficheiros temporários do "
                      L"programa."},
        {catalan,     L"Per resoldre aquest problema, podeu modificar la variable d'entorn 'TEMP' al "
                      L"Windows i definir el directori on s'han de crear els fitxers temporals del "
                      L"programa."},
        {italiano,    L"Per risolvere il problema, è possibile modificare la variabile di ambiente 'TEMP' "
                      L"in Windows e impostare la directory in cui devono essere creati i file temporanei "
                      L"del programma."},
        {rumano,      L"Pentru a rezolva această problemă, puteți modifica variabila de mediu 'TEMP' în "
                      L"Windows și puteți stabili directorul în care trebuie create fișierele temporare "
                      L"ale programului."},
        {chino,       L"若要解决此问题，可以在 Windows 中修改环境变量 'TEMP'，"
                      L"指定用于创建程序临时文件的目录。"},
        {aleman,      L"Um dieses Problem zu beheben, können Sie in Windows die Umgebungsvariable 'TEMP' "
                      L"ändern und das Verzeichnis festlegen, in dem die temporären Dateien des Programms "
                      L"erstellt werden sollen."},
        {ruso,        L"Чтобы устранить эту проблему, можно изменить в Windows переменную среды 'TEMP' и "
                      L"задать каталог, в котором должны создаваться временные файлы программы."},
        {polaco,      L"Aby rozwiązać ten problem, można zmodyfikować zmienną środowiskową 'TEMP' w "
                      L"systemie Windows i ustawić katalog, w którym mają być tworzone pliki tymczasowe "
                      L"programu."},
        {turco,       L"Bu sorunu çözmek için Windows'da 'TEMP' ortam değişkenini değiştirebilir ve "
                      L"programın geçici dosyalarının oluşturulması gereken dizini belirleyebilirsiniz."},
        {japones,     L"この問題を解決するには、Windows の環境変数 'TEMP' を変更して、"
                      L"プログラムの一時ファイルを作成するディレクトリを設定してください。"},
    },
};

constexpr datos_mensaje m_401224_fichero_en_uso_o_sin_permiso{
    .id = 401224, .fichero_mensajes = lumodir_msg, .linea = 277,
    .textos = {
        {espanol,     L"Es posible que el fichero esté siendo usado por otra aplicación o bien que no "
                      L"tenga permiso de escritura sobre este directorio."},
        {ingles,      L"It may be that it is being used by another application or you do not have "
                      L"sufficient privileges to write to this directory."},
        {frances,     L"Il est possible que le fichier soit utilisé par une autre application ou que vous "
                      L"ne disposiez pas d'une autorisation d'écriture sur ce répertoire."},
        {brasil,      L"É possível que o arquivo esteja sendo usado por outro aplicativo ou que você não "
                      L"tenha permissão de gravação neste diretório."},
        {portugal,    L"É possível que o ficheiro esteja a ser utilizado por outra aplicação ou que o "
                      L"utilizador não tenha permissão de escrita neste diretório."},
        {catalan,     L"És possible que una altra aplicació estigui utilitzant el fitxer o que no tingueu "
                      L"permís d'escriptura en aquest directori."},
        {italiano,    L"È possibile che il file sia in uso da parte di un'altra applicazione oppure che "
                      L"non si disponga dell'autorizzazione di scrittura per questa directory."},
        {rumano,      L"Este posibil ca fișierul să fie utilizat de altă aplicație sau să nu aveți "
                      L"permisiune de scriere în acest director."},
        {chino,       L"该文件可能正由其他应用程序使用，或者您可能没有此目录的写入权限。"},
        {aleman,      L"Möglicherweise wird die Datei von einer anderen Anwendung verwendet, oder Sie "
                      L"haben keine Schreibberechtigung für dieses Verzeichnis."},
        {ruso,        L"Возможно, файл используется другим приложением или у вас нет разрешения на запись "
                      L"в этот каталог."},
        {polaco,      L"Być może plik jest używany przez inną aplikację lub nie masz uprawnień do zapisu w "
                      L"tym katalogu."},
        {turco,       L"Dosya başka bir uygulama tarafından kullanılıyor olabilir veya bu dizine yazma "
                      L"izniniz olmayabilir."},
        {japones,     L"ファイルが別のアプリケーションで使用されているか、"
                      L"このディレクトリへの書き込みアクセス許可がない可能性があります。"},
    },
};

// The Spanish text says "archivos" itself, so the regional variants share it.
constexpr datos_mensaje m_402847_borrar_ficheros_o_modificar_temp{
    .id = 402847, .fichero_mensajes = lumodir_msg, .linea = 1014,
    .textos = {
        {espanol,     L"Para resolver este problema, puede eliminar los archivos ubicados en el directorio "
                      L"'%s' o modificar la variable de entorno 'TEMP' de Windows para establecer el "
                      L"directorio donde se crearán los archivos temporales del programa."},
        {ingles,      L"To resolve this problem, you can delete the files located in the '%s' directory or "
                      L"modify the Windows 'TEMP' environment variable to set the directory where the "
                      L"program's temporary files will be created."},
        {frances,     L"Pour résoudre ce problème, vous pouvez supprimer les fichiers situés dans le "
                      L"répertoire '%s' ou modifier la variable d'environnement 'TEMP' de Windows pour "
                      L"définir le répertoire dans lequel les fichiers temporaires du programme seront "
                      L"créés."},
        {brasil,      L"Para resolver este problema, você pode excluir os arquivos localizados no "
                      L"diretório '%s' ou modificar a variável de ambiente 'TEMP' do Windows para definir "
                      L"o diretório em que os arquivos temporários do programa serão criados."},
        {portugal,    L"Para resolver este problema, pode eliminar os ficheiros localizados no diretório "
                      L"'%s' ou modificar a variável de ambiente 'TEMP' do Windows para definir o "
                      L"diretório onde serão criados os ficheiros temporários do programa."},
        {catalan,     L"Per resoldre aquest problema, podeu suprimir els fitxers ubicats al directori '%s' "
                      L"o modificar la variable d'entorn 'TEMP' del Windows per definir el directori on es "
                      L"crearan els fitxers temporals del programa."},
        {italiano,    L"Per risolvere il problema, è possibile eliminare i file presenti nella directory "
                      L"'%s' oppure modificare la variabile di ambiente 'TEMP' di Windows per impostare la "
                      L"directory in cui verranno creati i file temporanei del programma."},
        {rumano,      L"Pentru a rezolva această problemă, puteți șterge fișierele aflate în directorul "
                      L"'%s' sau puteți modifica variabila de mediu 'TEMP' din Windows pentru a stabili "
                      L"directorul în care vor fi create fișierele temporare ale programului."},
        {chino,       L"若要解决此问题，可以删除目录 '%s' 中的文件，或修改 Windows 环境变量 'TEMP'，"
                      L"指定用于创建程序临时文件的目录。"},
        {aleman,      L"Um dieses Problem zu beheben, können Sie die Dateien im Verzeichnis '%s' löschen "
                      L"oder die Windows-Umgebungsvariable 'TEMP' ändern, um das Verzeichnis festzulegen, "
                      L"in dem die temporären Dateien des Programms erstellt werden."},
        {ruso,        L"Чтобы устранить эту проблему, можно удалить файлы из каталога '%s' или изменить "
                      L"переменную среды Windows 'TEMP', задав каталог, в котором будут создаваться "
                      L"временные файлы программы."},
        {polaco,      L"Aby rozwiązać ten problem, można usunąć pliki znajdujące się w katalogu '%s' lub "
                      L"zmodyfikować zmienną środowiskową 'TEMP' systemu Windows, aby ustawić katalog, w "
                      L"którym będą tworzone pliki tymczasowe programu."},
        {turco,       L"Bu sorunu çözmek için '%s' dizinindeki dosyaları silebilir veya programın geçici "
                      L"dosyalarının oluşturulacağı dizini belirlemek üzere Windows'un 'TEMP' ortam "
                      L"değişkenini değiştirebilirsiniz."},
        {japones,     L"この問題を解決するには、ディレクトリ '%s' にあるファイルを削除するか、"
                      L"Windows の環境変数 'TEMP' を変更して、"
                      L"プログラムの一時ファイルを作成するディレクトリを設定してください。"},
    },
};

constexpr datos_mensaje m_404522_sin_permiso_en_directorio{
    .id = 404522, .fichero_mensajes = lumodir_msg, .linea = 1075,
    .textos = {
        {espanol,     L"No es posible escribir en el directorio '%s' porque no tiene permiso de escritura. "
                      L"Si está intentando acceder a una unidad de red, verifique su permiso de escritura."},
        {ingles,      L"Unable to write to the directory '%s' because you do not have write permission. If "
                      L"you are trying to access a network drive, please check that you have write "
                      L"permission."},
        {frances,     L"Impossible d'écrire dans le répertoire '%s', car vous ne disposez pas de "
                      L"l'autorisation d'écriture. Si vous essayez d'accéder à un lecteur réseau, vérifiez "
                      L"que vous disposez de l'autorisation d'écriture."},
        {brasil,      L"Não é possível gravar no diretório '%s' porque você não tem permissão de gravação. "
                      L"Se estiver tentando acessar uma unidade de rede, verifique se você tem permissão "
                      L"de gravação."},
        {portugal,    L"Não é possível escrever no diretório '%s' porque não tem permissão de escrita. Se "
                      L"estiver a tentar aceder a uma unidade de rede, verifique se tem permissão de "
                      L"escrita."},
        {catalan,     L"No es pot escriure al directori '%s' perquè no teniu permís d'escriptura. Si esteu "
                      L"intentant accedir a una unitat de xarxa, comproveu que hi teniu permís "
                      L"d'escriptura."},
        {italiano,    L"Impossibile scrivere nella directory '%s' perché non si dispone "
                      L"dell'autorizzazione di scrittura. Se si sta tentando di accedere a un'unità di "
                      L"rete, verificare di disporre dell'autorizzazione di scrittura."},
        {rumano,      L"Nu se poate scrie în directorul '%s', deoarece nu aveți permisiune de scriere. "
                      L"Dacă încercați să accesați o unitate de rețea, verificați dacă aveți permisiune de "
                      L"scriere."},
        {chino,       L"无法写入目录 '%s'，因为您没有写入权限。如果您正在尝试访问网络驱动器，"
                      L"请确认您具有写入权限。"},
        {aleman,      L"In das Verzeichnis '%s' kann nicht geschrieben werden, da Sie keine "
                      L"Schreibberechtigung haben. Wenn Sie versuchen, auf ein Netzlaufwerk zuzugreifen, "
                      L"überprüfen Sie, ob Sie über die Schreibberechtigung verfügen."},
        {ruso,        L"Не удается выполнить запись в каталог '%s', так как у вас нет разрешения на "
                      L"запись. Если вы пытаетесь получить доступ к сетевому диску, убедитесь, что у вас "
                      L"есть разрешение на запись."},
        {polaco,      L"Nie można zapisywać w katalogu '%s', ponieważ nie masz uprawnień do zapisu. Jeśli "
                      L"próbujesz uzyskać dostęp do dysku sieciowego, sprawdź, czy masz uprawnienia do "
                      L"zapisu."},
        {turco,       L"Yazma izniniz olmadığından '%s' dizinine yazılamıyor. Bir ağ sürücüsüne erişmeye "
                      L"çalışıyorsanız yazma izniniz olup olmadığını denetleyin."},
        {japones,     L"書き込みアクセス許可がないため、ディレクトリ '%s' に書き込むことができません。"
                      L"ネットワーク ドライブにアクセスしようとしている場合は、"
                      L"書き込みアクセス許可があることを確認してください。"},
    },
};

constexpr datos_mensaje m_404523_fichero_sin_permiso_de_escritura{
    .id = 404523, .fichero_mensajes = lumodir_msg, .linea = 1131,
    .textos = {
        {espanol,     L"El fichero no tiene permiso de escritura."},
        {ingles,      L"The file does not have write permission."},
        {frances,     L"Le fichier n'est pas accessible en écriture."},
        {brasil,      L"O arquivo não tem permissão de gravação."},
        {portugal,    L"O ficheiro não tem permissão de escrita."},
        {catalan,     L"El fitxer no té permís d'escriptura."},
        {italiano,    L"Il file non è accessibile in scrittura."},
        {rumano,      L"Fișierul nu are permisiune de scriere."},
        {chino,       L"该文件没有写入权限。"},
        {aleman,      L"Für die Datei besteht keine Schreibberechtigung."},
        {ruso,        L"Нет разрешения на запись в файл."},
        {polaco,      L"Brak uprawnień do zapisu w pliku."},
        {turco,       L"Dosyanın yazma izni yok."},
        {japones,     L"ファイルへの書き込みアクセス許可がありません。"},
    },
};

// clang-format on

// The name of a row is the name of its builder and its id the one in the texts: neither is typed twice.
#define I_CONSTRUCTOR(mensaje)                        \
    void i_msg_##mensaje(RegistroMensaje* registro) { \
        i_construye<m_##mensaje>(registro);           \
    }
LUMODIR_MENSAJES(I_CONSTRUCTOR)
#undef I_CONSTRUCTOR

#define I_FILA(mensaje) {"i_msg_" #mensaje, m_##mensaje.id, i_msg_##mensaje},
constexpr fila_catalogo catalogo[num_mensajes_catalogo] = {LUMODIR_MENSAJES(I_FILA)};
#undef I_FILA

}  // namespace interno
