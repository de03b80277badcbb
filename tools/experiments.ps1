# For the day when a Windows machine is at hand: what only such a machine can settle, each with what is expected.
#     powershell -ExecutionPolicy Bypass -File tools\experiments.ps1 -Lumodir C:\lumodir\lumodir.exe [-Only "2,5,16"]
# What can be done by the command is done here, in a directory of its own in TEMP, and judged; for the rest it says what
# to do and what should be seen, and takes down the answer. Needs Windows PowerShell 5.1 or later. An ordinary user runs it
# once, an administrator once more; each leaves a record of its own in the current directory, experiments.user.txt or
# experiments.admin.txt. The exit code is 1 when one of its own verdicts is bad.
# Nobody has run it yet: there is no Windows on the machine that builds and tests. A grammar read it before the last changes.
param(
    [Parameter(Mandatory = $true)][string]$Lumodir,
    # A text: what `powershell -File` is given for a list of numbers arrives as one.
    [string]$Only = ''
)
Set-StrictMode -Version Latest
$ErrorActionPreference = 'Stop'
$wanted = @($Only -split '[^0-9]+' | Where-Object { $_ } | ForEach-Object { [int]$_ })
$script:code = 0
$script:good = 0
$script:bad = 0
$Lumodir = (Resolve-Path -LiteralPath $Lumodir).Path
$admin = ([Security.Principal.WindowsPrincipal][Security.Principal.WindowsIdentity]::GetCurrent()).IsInRole(
    [Security.Principal.WindowsBuiltInRole]::Administrator)
$who = if ($admin) { 'admin' } else { 'user' }
$record = Join-Path (Get-Location) "experiments.$who.txt"
$work = Join-Path $env:TEMP ('lumo_experiments_' + $PID)
New-Item -ItemType Directory -Path $work | Out-Null
Set-Content -LiteralPath $record -Encoding UTF8 -Value ('lumodir experiments, {0}, {1}, {2}' -f (Get-Date), [Environment]::OSVersion.VersionString, $who)

function Note([string]$text) {
    Write-Host $text
    Add-Content -LiteralPath $record -Encoding UTF8 -Value $text
}
function Verdict([string]$what, [bool]$good) {
    if ($good) { $script:good++; Note "  good: $what" } else { $script:bad++; Note "  BAD:  $what" }
}
# Whoever runs this looks and answers.
function Look([string]$todo, [string]$expected, [string]$bad) {
    Note "  do:       $todo"
    Note "  expected: $expected"
    if ($bad) { Note "  bad:      $bad" }
    $answer = Read-Host '  what happened (g = as expected, n = cannot be tried here, or a text)'
    Note "  answer:   $answer"
}
# Runs the command; its exit code is in $script:code, its text comes back. What it says on standard error is text like
# the rest: under 'Stop' the older PowerShell would end the experiment there.
function Lumo {
    $ErrorActionPreference = 'Continue'
    $text = & $Lumodir @args 2>&1 | Out-String
    $script:code = $LASTEXITCODE
    return $text
}
function Tree([string]$name) {
    $root = Join-Path $work $name
    foreach ($below in '', 'a', 'a\b') { New-Item -ItemType Directory -Path (Join-Path $root $below) -Force | Out-Null }
    foreach ($below in 'x.txt', 'a\y.txt', 'a\b\z.txt') { Set-Content -LiteralPath (Join-Path $root $below) -Value 'x' }
    return $root
}

$experiments = @(
    @{ N = 1; Name = 'search for processes among suspended programs'; Do = {
        Note '  (Calculator and Settings open and minimised for a minute first, if possible)'
        $time = Measure-Command { Lumo ps no-such.dll | Out-Null }
        Verdict ('found nothing in {0:N2} s; expected less than 1 s, bad above 2 s' -f $time.TotalSeconds) ($time.TotalSeconds -lt 2)
        Look 'watch Process Monitor for "Thread Create" in other processes during lumodir ps' 'none' 'threads in processes that are not lumodir' } },
    @{ N = 2; Name = 'read-only directories'; Do = {
        $t = Tree 'readonly'
        attrib +r (Join-Path $t 'a')
        attrib +r $t
        Lumo rmtree $t --yes | Out-Null
        Verdict 'the whole tree is gone' (-not (Test-Path -LiteralPath $t))
        foreach ($how in '--if-possible', '--retry') {
            $t = Tree 'readonly'
            attrib +r (Join-Path $t 'a\b')
            Lumo rmtree $t --yes $how | Out-Null
            Verdict "the same with $how" (-not (Test-Path -LiteralPath $t))
        }
        Look 'give a folder an icon of its own in Explorer, then lumodir rmtree it' 'gone at once' 'half a second, "Unable to delete the directory"' } },
    @{ N = 3; Name = 'drives without medium'; Do = {
        Lumo drives | Out-Null
        Verdict 'lumodir drives came back' ($script:code -eq 0)
        Look 'with an empty card reader or DVD drive X: lumodir drives, lumodir exists X:\x, lumodir ls X:\' 'no dialog, an answer at once' '"There is no disk in the drive", and the call waits' } },
    @{ N = 4; Name = 'trees on every file system'; Do = {
        $t = Tree 'names'
        $outside = Tree 'outside'
        # By cmd: the classes of the older PowerShell do not take the prefix.
        foreach ($odd in 'con', 'a.', 'b ') { cmd /c "md ""\\?\$t\$odd""" }
        Verdict 'the odd names are there to begin with' (@(cmd /c "dir /b /ad ""$t""").Count -eq 4)
        New-Item -ItemType Junction -Path (Join-Path $t 'junction') -Value $outside | Out-Null
        Lumo rmtree $t --yes | Out-Null
        Verdict 'odd names and a junction: the tree is gone' (-not (Test-Path -LiteralPath $t))
        Verdict 'what the junction points to is whole' (Test-Path -LiteralPath (Join-Path $outside 'a\b\z.txt'))
        Look 'the same on FAT32, exFAT, ReFS, a share, a NAS, SMB 1, VirtualBox/Docker folders, SUBST, \\?\Volume{...}\, a mounted folder; with a symbolic link to a file' 'all gone, nothing lost outside, answer 1' 'something not entered: note the code of the refused query (Process Monitor)' } },
    @{ N = 5; Name = 'dates of other years'; Do = {
        Look 'set the zone to Brasilia (or Moscow, Istanbul); a file dated 2015-01-15 12:00 UTC; compare fichsdir_fecha_fichero and timefich_convertir_fecha (also lumodir sets and lumodir date)' 'equal: 10:00 local in Brasilia' 'one of them says 09:00' } },
    @{ N = 6; Name = 'names that a scanner holds'; Do = {
        $t = Tree 'held'
        $held = [IO.File]::Open((Join-Path $t 'a\b\z.txt'), 'Open', 'Read', 'ReadWrite, Delete')
        $timer = [Diagnostics.Stopwatch]::StartNew()
        try { Lumo rmtree $t --yes --if-possible | Out-Null } finally { $there = Test-Path -LiteralPath $t; $held.Close() }
        Note ('  held open all the time: exit code {0} after {1} ms' -f $script:code, $timer.ElapsedMilliseconds)
        Verdict 'answer and tree agree (NTFS of Windows 10 and later: gone)' (($script:code -eq 0) -eq (-not $there))
        Look 'a helper opens each file of a tree with all sharing for 300 ms; the three ways of rmtree on NTFS, FAT32, a share, Windows 7' 'the tree gone' 'success, and empty directories left (145 in Process Monitor)' } },
    @{ N = 7; Name = 'unique files beside a scanner'; Do = {
        $d = Join-Path $work 'unique'
        New-Item -ItemType Directory -Path $d | Out-Null
        1..50 | ForEach-Object { foreach ($ext in 'exe', 'js') { Lumo tmp --ext $ext --in $d | Out-Null } }
        $names = @(Get-ChildItem -LiteralPath $d -Force)
        Verdict ('100 calls made {0} files, {1} of them left-over .tmp' -f $names.Count, @($names | Where-Object Extension -eq '.tmp').Count) ($names.Count -eq 100 -and -not ($names | Where-Object Extension -eq '.tmp'))
        Look 'again with real-time protection and a helper that opens each new file for 50 ms without FILE_SHARE_DELETE' 'one file a call, no .tmp' 'several candidates, questions, left-overs' } },
    @{ N = 8; Name = 'the probe of a write test'; Do = {
        $d = Join-Path $work 'probe'
        New-Item -ItemType Directory -Path $d | Out-Null
        1..100 | ForEach-Object { Lumo test $d --write | Out-Null }
        Verdict 'nothing is left of 100 tests' (@(Get-ChildItem -LiteralPath $d -Force).Count -eq 0)
        Look 'the same beside the helper of 7; then in a folder with "create files" granted and "delete" denied' 'no ~lumo~~_*.tmp (second: note the answer)' 'left-overs' } },
    @{ N = 9; Name = 'files that cannot be asked'; Do = {
        foreach ($file in "$env:SystemDrive\pagefile.sys", "$env:SystemDrive\hiberfil.sys") {
            if ([IO.Directory]::GetFiles("$env:SystemDrive\") -contains $file) {
                Lumo exists $file | Out-Null
                Verdict "$file exists" ($script:code -eq 0)
            }
        }
        Look 'lumodir exists on a readable file in a folder without list right; on a mapped drive that is disconnected; on an online-only OneDrive file with OneDrive ended' 'yes, no, yes' 'no for the first or the third' } },
    @{ N = 10; Name = 'DFS'; Do = {
        Look 'a DFS root with two link folders: attributes and dwReserved0 of FindFirstFileW, FileAttributeTagInfo with OPEN_REPARSE_POINT' 'no reparse attribute, or tag 0x8000000A' 'another tag. Never run rmtree on it before this is known' } },
    @{ N = 11; Name = 'OneDrive'; Do = {
        Look 'lumodir ls, date, exists and rmtree --yes on a folder with online-only files' 'nothing is downloaded; the folder is entered and deleted' 'downloads, or "not entered"' } },
    @{ N = 12; Name = 'permission to write in the registry'; Do = {
        $there = Test-Path 'HKLM:\SOFTWARE\LUMO'
        Look 'call lumoreg_tiene_permisos_escribir_en_registro() from a small host, once as user and once as administrator' '0 and 1; no report; as user nothing under HKCU\Software\Classes\VirtualStore' 'code 87 or 5'
        Verdict 'no key HKLM\SOFTWARE\LUMO is left' ((Test-Path 'HKLM:\SOFTWARE\LUMO') -eq $there) } },
    @{ N = 13; Name = 'keys: links, and directly below a root'; Do = {
        New-Item -Path 'HKCU:\LumoExperiment\A\B' -Force | Out-Null
        Lumo reg rm 'HKCU\LumoExperiment' --yes | Out-Null
        Verdict 'a key below the root is gone with its subkeys' (-not (Test-Path 'HKCU:\LumoExperiment'))
        Look 'HKCU\Software\LinkTest -> HKCU\Software\Target (REG_OPTION_CREATE_LINK), then lumodir reg rm HKCU\Software\LinkTest' 'the link gone, Target whole' 'subkeys of Target gone, or the link left (code 2)' } },
    @{ N = 14; Name = 'views of the registry'; Do = {
        Look 'as administrator: HKLM\SOFTWARE\T1\A with full control denied to this user, HKLM\SOFTWARE\WOW6432Node\T1\A\B; lumodir reg rm HKLM\SOFTWARE\T1\A' 'nothing deleted anywhere' 'WOW6432Node\T1\A\B gone' } },
    @{ N = 15; Name = 'PATH of the process'; Do = {
        $omega = Join-Path $work ([string][char]0x3A9 + [char]0x3BC)
        New-Item -ItemType Directory -Path $omega | Out-Null
        Copy-Item -LiteralPath "$env:SystemRoot\System32\where.exe" -Destination (Join-Path $omega 'lumo_probe.exe')
        $before = $env:PATH
        $env:PATH = "$omega;$before"
        try { Lumo where lumo_probe | Out-Null } finally { $env:PATH = $before }
        Verdict 'a program in a directory outside the code page is found' ($script:code -eq 0)
        Look 'a host of the universal C runtime: lumodir_busca_ejecutable_del_path, SetEnvironmentVariableW(PATH), search again' 'found in the new PATH' 'the old PATH' } },
    @{ N = 16; Name = 'pipes'; Do = {
        $d = Join-Path $work 'pipes'
        New-Item -ItemType Directory -Path $d | Out-Null
        $lines = @("b$([char]0xF1)o", [string][char]0x3A9)
        $ErrorActionPreference = 'Continue'  # a refusal on standard error is an answer
        Push-Location -LiteralPath $d
        try {
            cmd /c "echo a$([char]0xF1)o|""$Lumodir"" mkdir - 2>&1" | Out-Null
            $lines | & $Lumodir mkdir '-' 2>&1 | Out-Null
        } finally { Pop-Location }
        $names = @(Get-ChildItem -LiteralPath $d | ForEach-Object Name)
        Note ('  made: ' + ($names -join ' | '))
        Verdict 'no name holds U+FFFD or U+FEFF' (-not ($names -match "[$([char]0xFFFD)$([char]0xFEFF)]"))
        Look 'lumodir ls | Select-String, lumodir ls > x.txt in cmd (chcp 850), PowerShell 5.1 and 7' 'the right names, or a refusal' 'names in other letters' } },
    @{ N = 17; Name = 'temporary directory'; Do = {
        Look 'TMP and TEMP to a missing folder, to one of 250 and of 259 characters; as user, as SYSTEM, in a Remote Desktop session: lumodir tmp --ext x' 'the fallback, or three sentences once; note whether Shell Folders has "Local Settings"' 'a crash, or a path that is not there' } },
    @{ N = 18; Name = 'waits of the network'; Do = {
        Look 'from a second machine make a directory on a share 1 s after lumodir_espera_acceso_a_recursos_en_directorio began: default policy, then 12 x 1 s' 'not found, then found' 'never found'
        Look 'lumodir ls and exists on \\away\share (machine off), timed' 'one timeout a call' 'two timeouts for a listing' } },
    @{ N = 19; Name = '32-bit and protected programs'; Do = {
        Look 'a 32-bit program with a library of its own running: lumodir ps for its .exe, its .dll and kernel32.dll in both spellings; lumodir kill on a protected process (MsMpEng.exe)' 'found, once each; 0 and no report for the protected one' 'the library not found, the program listed twice' } },
    @{ N = 20; Name = 'hosts and consoles'; Do = {
        Look '2000 x LoadLibrary/FreeLibrary from a host of the universal C runtime with other threads calling; a host with activeCodePage UTF-8; a GUI host without standard handles; Ctrl-C, closing the window and logging off during rmtree of 100,000 files; a warning with two paths of 10,000 characters on a console of Windows 7; all of it on ARM64' 'no crash, no growth, warnings whole, the deletion stops between two files' 'a crash, memory or TLS indexes that grow, half a warning, an exit code that says all is well' } }
)
try {
    foreach ($e in $experiments) {
        if ($wanted.Count -ne 0 -and $wanted -notcontains $e.N) { continue }
        Note ''
        Note ('{0}. {1}' -f $e.N, $e.Name)
        try { & $e.Do } catch { Verdict "the experiment itself failed: $_" $false }
    }
} finally {
    # The command under test is not trusted with the clearing up, nor are links followed.
    cmd /c "rmdir /s /q ""$work"""
}
Note ''
Note ('{0} good, {1} bad; record: {2}' -f $script:good, $script:bad, $record)
exit [int]($script:bad -ne 0)
