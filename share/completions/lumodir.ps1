# Completion of lumodir's commands and options in PowerShell, made by: lumodir completion powershell
Register-ArgumentCompleter -Native -CommandName lumodir, lumodir.exe -ScriptBlock {
    param($word, $line, $position)
    $commands = [ordered]@{
        'check' = 'tell whether paths are valid, and why not'
        'split' = 'drive, directory, base name and extension of a path'
        'join' = 'join directories and a name into one path'
        'name' = 'the file name of a path, or another piece of it'
        'relative' = 'paths relative to a base directory'
        'absolute' = 'paths made absolute on a base directory'
        'shorten' = 'abbreviate a path towards N characters'
        'repair' = 'make a valid file name of any text'
        'ls' = 'the files, or the subdirectories, of a directory'
        'tree' = 'the files of a whole tree, counted per directory'
        'sets' = 'the files of a directory with dates and protection'
        'exists' = 'tell whether files or directories exist'
        'test' = 'can it be read and written, and if not, why'
        'size' = 'sizes of files'
        'date' = 'when files were modified and created'
        'touch' = 'set the date of files, creating missing ones'
        'mkdir' = 'create directories with their missing parents'
        'mv' = 'rename or move a file; nothing is ever replaced'
        'protect' = 'make files read-only'
        'unprotect' = 'make files writable'
        'rename-ext' = 'give all files with one extension another'
        'rm' = 'delete files; asks first'
        'rmtree' = 'delete a directory with everything in it; asks first'
        'tmp' = 'create an empty file with a new name'
        'where' = 'find an executable in the directories of PATH'
        'short' = 'the short (8.3) form of paths'
        'long' = 'the long form of paths'
        'whereami' = 'where this program and its directories are'
        'drives' = 'the drives of this machine'
        'ps' = 'processes that have loaded an executable or a library'
        'kill' = 'end the processes of an executable; asks first'
        'about' = 'version, system, code page and language'
        'reg ls' = 'subkeys and string values of a registry key'
        'reg get' = 'a value as a string'
        'reg set' = 'write a value, creating the key'
        'reg rm' = 'delete a value, or a key with its subkeys; asks first'
        'completion' = 'complete commands and options with the Tab key'
    }
    $options = @{
        'check' = [ordered]@{
            '--quiet' = 'show the invalid ones only'
        }
        'split' = [ordered]@{
            '--wildcards' = 'the path may have * as its name and .* as its extension'
        }
        'join' = [ordered]@{
            '--drive' = 'compose instead: the drive (C: or \\server\share)'
            '--dir' = 'its directory'
            '--base' = 'its base name; repaired when it is not valid'
            '--ext' = 'its extension, with or without the point'
        }
        'name' = [ordered]@{
            '--base' = 'the name without its extension'
            '--ext' = 'the extension without its point'
            '--dir' = 'the directory with its final separator'
            '--stem' = 'the whole path without its extension'
            '--with-ext' = 'the whole path with another extension; "" for none'
        }
        'ls' = [ordered]@{
            '--ext' = 'only files with this extension; ? stands for one character, "" for files without an extension'
            '--filter' = 'only names that the pattern finds (img*, *.txt); with --ext the pattern is that of the base name'
            '--dirs' = 'the subdirectories instead of the files'
            '--long' = 'with sizes, dates and protection'
        }
        'tree' = [ordered]@{
            '--ext' = 'count only files with this extension'
            '--depth' = 'count deeper directories with the one above them, N levels down'
            '--top' = 'only the N directories with the most files'
            '--all' = 'also directories without any such file'
            '--files' = 'the path of every file instead of the counts'
        }
        'sets' = [ordered]@{
            '--by-date' = 'the newest first, instead of by name'
        }
        'exists' = [ordered]@{
            '--file' = 'it has to be a file'
            '--dir' = 'it has to be a directory'
        }
        'test' = [ordered]@{
            '--read' = 'the exit code is about reading only'
            '--write' = 'the exit code is about writing only'
        }
        'date' = [ordered]@{
            '--utc' = 'in UTC instead of the wall clock here'
        }
        'touch' = [ordered]@{
            '--date' = 'now (the default), 2024-05-01, "2024-05-01 12:30[:00]", a final Z for UTC, or @SECONDS since 1970 in UTC'
            '--like' = 'the date of another file'
            '--utc' = 'the date is in UTC'
            '--no-create' = 'do not create a missing file'
        }
        'mkdir' = [ordered]@{
            '--for-file' = 'the paths name files whose directories are wanted'
            '--if-possible' = 'without a message of the library and without asking'
        }
        'mv' = [ordered]@{
            '--if-possible' = 'one attempt, without retries and without asking'
        }
        'rm' = [ordered]@{
            '--if-exists' = 'a missing file is no failure'
            '--if-possible' = 'without a message of the library and without asking'
            '--retries' = 'silent attempts before a message (default 5)'
            '--wait' = 'milliseconds before each of them (default 100)'
        }
        'rmtree' = [ordered]@{
            '--if-possible' = 'one silent pass over everything; says which files could not be deleted'
            '--retry' = 'up to 20 silent passes with pauses, for files that others hold for a moment'
            '--retries' = 'silent attempts with each entry before a message (default 5)'
            '--wait' = 'milliseconds before each of them (default 100)'
        }
        'tmp' = [ordered]@{
            '--ext' = 'its extension (default tmp)'
            '--in' = 'in this directory instead of the temporary one'
        }
        'kill' = [ordered]@{
            '--modules' = 'the name may be that of a library'
        }
        'reg ls' = [ordered]@{
            '--view' = 'only the 32-bit or the 64-bit view (32, 64)'
        }
        'reg get' = [ordered]@{
            '--view' = 'only the 32-bit or the 64-bit view (32, 64)'
        }
        'reg set' = [ordered]@{
            '--dword' = 'the data is a 32-bit number'
            '--expand' = 'the data holds environment variables (%PATH%)'
            '--view' = 'in the 32-bit or the 64-bit view (32, 64)'
        }
    }
    $general = [ordered]@{
        '--json' = 'answer in JSON, for scripts'
        '--lang' = 'language of the library''s messages: a name, a code or a number'
        '--verbose' = 'also show the library''s internal errors, on standard error'
        '--yes' = 'do not ask before changing or deleting (-y)'
        '--help' = 'this text (-h, /?)'
        '--version' = 'the version of this command'
    }

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
