// For the shell: completion.
//
// The script knows what the table of subcommands knew when it was printed; share/completions holds one of this
// version, which tests/cli compare with what the command prints.
#include <string>

#include "consola.hpp"
#include "linea_de_ordenes.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "textos.hpp"

namespace mando {

namespace {

std::wstring i_entre_comillas(std::wstring_view texto) {
    std::wstring resultado = L"'";
    for (const wchar_t c : texto) {
        resultado += c == L'\'' ? L"''" : c == L'\n' ? L" " : std::wstring(1, c);
    }
    return resultado + L"'";
}

std::wstring i_opciones(std::span<const opcion> opciones, std::wstring_view sangria) {
    std::wstring texto = L"[ordered]@{\n";
    for (const opcion& o : opciones) {
        texto.append(sangria).append(L"    ").append(i_entre_comillas(L"--" + ancho_de(o.nombre)));
        texto.append(L" = ").append(i_entre_comillas(di(o.ayuda))).append(L"\n");
    }
    return texto.append(sangria).append(L"}\n");
}

std::wstring i_para_powershell() {
    std::wstring ordenes = L"    $commands = [ordered]@{\n", opciones = L"    $options = @{\n";
    for (const grupo& g : grupos()) {
        for (const orden& o : g.ordenes) {
            const std::wstring nombre = i_entre_comillas(ancho_de(o.nombre));
            ordenes += L"        " + nombre + L" = " + i_entre_comillas(di(o.resumen)) + L"\n";
            if (!o.opciones.empty()) {
                opciones += L"        " + nombre + L" = " + i_opciones(o.opciones, L"        ");
            }
        }
    }
    return L"# Completion of lumodir's commands and options in PowerShell, made by: lumodir completion "
           L"powershell\n"
           L"Register-ArgumentCompleter -Native -CommandName lumodir, lumodir.exe -ScriptBlock {\n"
           L"    param($word, $line, $position)\n" +
           ordenes + L"    }\n" + opciones + L"    }\n    $general = " +
           i_opciones(opciones_generales, L"    ") +
           LR"ps(
    # What stands before the word that is being completed, without options.
    $before = @($line.CommandElements | Select-Object -Skip 1 |
        Where-Object { $_.Extent.EndOffset -lt $position -and -not $_.ToString().StartsWith('-') } |
        ForEach-Object { $_.ToString() })
    $command = if ($before.Count -gt 1 -and $commands.Contains("$($before[0]) $($before[1])")) {
        "$($before[0]) $($before[1])"
    } elseif ($before.Count -gt 0 -and $commands.Contains($before[0])) {
        $before[0]
    }
    $candidates = [ordered]@{}
    if ("$word".StartsWith('-')) {
        $own = if ($command) { $options[$command] }
        foreach ($table in @($own, $general)) {
            if ($table) { foreach ($name in $table.Keys) { $candidates[$name] = $table[$name] } }
        }
    } elseif (-not $command) {
        # The first word of a command, or the second of one like "reg get".
        foreach ($name in $commands.Keys) {
            $parts = $name.Split(' ')
            if ($before.Count -eq 0) {
                $candidates[$parts[0]] = $commands[$name]
            } elseif ($before.Count -eq 1 -and $parts.Count -gt 1 -and $parts[0] -eq $before[0]) {
                $candidates[$parts[1]] = $commands[$name]
            }
        }
    }
    foreach ($name in $candidates.Keys) {
        if ($name.StartsWith("$word", [StringComparison]::OrdinalIgnoreCase)) {
            [System.Management.Automation.CompletionResult]::new($name, $name, 'ParameterValue', $candidates[$name])
        }
    }
}
)ps";
}

int i_completion(peticion& p) {
    if (!iguales_sin_caja(p.argumentos[0], L"powershell")) {
        throw uso_incorrecto{di("unknown shell '%1'; only powershell is supported", p.argumentos[0])};
    }
    const std::wstring guion = i_para_powershell();
    return responde(p, json::objeto().pon("shell", "powershell").pon("script", guion),
                    [&] { salida().escribe(std::wstring_view(guion)); });
}

constexpr ejemplo ejemplos_completion[] = {
    {.linea = "completion powershell | Out-String | Invoke-Expression",
     .que_hace = "load it in PowerShell, now and from its profile"},
};

constexpr orden tabla_interprete[] = {
    {.nombre = "completion",
     .argumentos = "SHELL",
     .resumen = "complete commands and options with the Tab key",
     .detalle = "Prints a script for the named shell (powershell), to be loaded from its profile.",
     .minimo = 1,
     .maximo = 1,
     .ejemplos = ejemplos_completion,
     .ejecuta = i_completion},
};

}  // namespace

const std::span<const orden> ordenes_interprete = tabla_interprete;

}  // namespace mando
