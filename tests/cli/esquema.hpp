// The answers in JSON against share/schema/lumodir.schema.json, with as much of JSON Schema as that file uses.
#pragma once

#include <string>
#include <vector>

namespace cli {

// Empty when the text is an answer of that command, or a refusal; else what is wrong with it.
std::string contra_el_esquema(const std::string& orden, const std::string& json);

// The command of a command line: "ls", "reg get", "version" for --version; empty when there is none.
std::string orden_de(const std::vector<std::string>& argumentos);

// The commands that the schema describes, and the keys that it gives each.
std::vector<std::string> ordenes_del_esquema();
std::vector<std::string> claves_del_esquema(const std::string& orden);

}  // namespace cli
