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
        'shorten' = 'abbreviate a path to about N characters'
        'repair' = 'make a valid file name of any text'
        'ls' = 'the files and directories of a directory'
        'tree' = 'draw the directories of a tree with the number of their files'
        'sets' = 'the files of a directory with dates and protection'
        'find' = 'find files and directories by name, size or date'
        'du' = 'what directories hold: bytes and files, everything below included'
        'exists' = 'tell whether files or directories exist'
        'test' = 'tell whether files or directories can be read and written, and why not'
        'size' = 'sizes of files'
        'date' = 'when files were modified and created'
        'touch' = 'set the date of files, creating missing ones'
        'mkdir' = 'create directories with their missing parents'
        'mv' = 'rename or move files; nothing is ever replaced'
        'protect' = 'make files read-only'
        'unprotect' = 'make files writable'
        'rename-ext' = 'change the extension of all files that have a given one'
        'who' = 'which programs hold a file'
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
            '--ext' = 'its extension, with or without the dot'
        }
        'name' = [ordered]@{
            '--base' = 'the name without its extension'
            '--ext' = 'the extension without its dot'
            '--dir' = 'the directory with its final separator'
            '--stem' = 'the whole path without its extension'
            '--with-ext' = 'the whole path with another extension; "" for none'
        }
        'ls' = [ordered]@{
            '--ext' = 'only files with this extension; ? stands for one character, "" for files without an extension'
            '--filter' = 'only names that the pattern matches (img*, *.txt); with --ext the pattern is that of the base name'
            '--files' = 'only files'
            '--dirs' = 'only directories'
            '--all' = 'directories whose names begin with a dot too'
            '--long' = 'with attributes (d directory, l link, r read-only, h hidden, s system, a archive), sizes and dates'
            '--human' = 'with --long: sizes in KB, MB and so on'
            '--sort' = 'by name (the default), size, date (largest and newest first) or ext'
            '--reverse' = 'the other way round'
        }
        'tree' = [ordered]@{
            '--with-files' = 'draw the files too'
            '--ext' = 'only files with this extension'
            '--depth' = 'not deeper than N levels; what is below is counted with the directory above it'
            '--counts' = 'a table of the files in each directory instead of a drawing'
            '--top' = 'only the N directories with the most files, as a table'
            '--all' = 'directories whose names begin with a dot too'
            '--empty' = 'with --counts or --ext: directories without any such file too'
            '--files' = 'the path of every file, one per line'
        }
        'sets' = [ordered]@{
            '--by-date' = 'the newest first, instead of by name'
        }
        'find' = [ordered]@{
            '--type' = 'only a file, directory, link, or what is empty; the first letter is enough'
            '--extension' = 'only files with this extension; may be given several times'
            '--size' = 'only files of +S (at least), -S (at most) or exactly S: b, k, m, g, t by 1000, ki, mi, gi, ti by 1024'
            '--changed-within' = 'changed since: 10min, 2h, 3d, 1week, or a date as touch takes it'
            '--changed-before' = 'not changed since'
            '--max-depth' = 'not deeper than N levels'
            '--min-depth' = 'not above N levels'
            '--exclude' = 'leave out what matches the pattern, and what is below; may be given several times'
            '--hidden' = 'search directories whose names begin with a dot too'
            '--glob' = 'PATTERN is that of the whole name, also without * and ?'
            '--full-path' = 'compare PATTERN with the whole path'
            '--case-sensitive' = 'case-sensitive'
            '--absolute-path' = 'show full paths'
            '--max-results' = 'stop after N'
            '--long' = 'with attributes, sizes and dates'
            '--print0' = 'a zero byte after each path instead of a line break'
        }
        'du' = [ordered]@{
            '--depth' = 'directories down to N levels (1, or 0 for several paths)'
            '--sort' = 'by size (the default) or name'
            '--top' = 'only the first N'
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
            '--utc' = 'in UTC instead of local time'
        }
        'touch' = [ordered]@{
            '--date' = 'now (the default), 2024-05-01, "2024-05-01 12:30[:00]", a final Z for UTC, or @SECONDS since 1970 in UTC'
            '--like' = 'the date of another file'
            '--utc' = 'the date is in UTC'
            '--no-create' = 'do not create a missing file'
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'mkdir' = [ordered]@{
            '--for-file' = 'the paths name files whose directories are wanted'
            '--if-possible' = 'without a message of the library and without asking'
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'mv' = [ordered]@{
            '--if-possible' = 'one attempt, without retries and without asking'
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'protect' = [ordered]@{
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'unprotect' = [ordered]@{
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'rename-ext' = [ordered]@{
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'rm' = [ordered]@{
            '--if-exists' = 'a missing file is no failure'
            '--if-possible' = 'without a message of the library and without asking'
            '--retries' = 'silent retries before you are asked (default 5)'
            '--wait' = 'milliseconds to wait before each retry (default 100)'
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'rmtree' = [ordered]@{
            '--if-possible' = 'one silent pass over everything; says which files could not be deleted'
            '--retry' = 'up to 20 silent passes with pauses, for files that other programs hold for a moment'
            '--retries' = 'silent retries with each entry before you are asked (default 5)'
            '--wait' = 'milliseconds to wait before each retry (default 100)'
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'tmp' = [ordered]@{
            '--ext' = 'its extension (default tmp)'
            '--in' = 'in this directory instead of the temporary one'
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'kill' = [ordered]@{
            '--modules' = 'also accept the name of a library: ends every process that has loaded it'
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'reg ls' = [ordered]@{
            '--view' = 'only the 32-bit or the 64-bit view (32, 64)'
        }
        'reg get' = [ordered]@{
            '--view' = 'only the 32-bit or the 64-bit view (32, 64)'
        }
        'reg set' = [ordered]@{
            '--dword' = 'the data is a 32-bit number'
            '--expand' = 'the data contains references to environment variables (%PATH%)'
            '--view' = 'in the 32-bit or the 64-bit view (32, 64)'
            '--dry-run' = 'show what would be done, and do nothing'
        }
        'reg rm' = [ordered]@{
            '--dry-run' = 'show what would be done, and do nothing'
        }
    }
    $general = [ordered]@{
        '--json' = 'answer in JSON, for scripts'
        '--lang' = 'language of messages: a name, a code or a number (help and the command''s own words are in English or Spanish)'
        '--verbose' = 'also show the library''s internal errors, on standard error'
        '--yes' = 'do not ask before changing or deleting (-y)'
        '--help' = 'this text (-h, -?, /?)'
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
