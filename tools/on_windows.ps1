# The day with a Windows machine: builds there, does the experiments, runs every test program, and says what came out.
#     powershell -ExecutionPolicy Bypass -File tools\on_windows.ps1 [-Preset windows-msys2] [-Part experiments|tests]
# Where each preset's compiler is found, and in which shell this runs, stands in docs\guide.md, "Building on Windows". What
# each step settles stands in docs\platforms.md, "What only a Windows machine can settle". First as an ordinary user, then
# as an administrator: each leaves its own record, on_windows.<user or admin>.txt in the build's folder, beside
# experiments.<user or admin>.txt, one log and one .xml a program (the .xml is the last run's). Exit code 1 when a
# verdict is bad or a case fails.
# Nobody has run it yet: there is no Windows on the machine that builds and tests. A grammar read it before the last changes.
param(
    [ValidateSet('windows-msys2', 'windows-msvc', 'windows-clang-cl')][string]$Preset = 'windows-msys2',
    [ValidateSet('all', 'experiments', 'tests')][string]$Part = 'all',
    [string[]]$Configure = @()  # more arguments for cmake, as -DCMAKE_PREFIX_PATH=...
)
Set-StrictMode -Version Latest
# What a program says on standard error is text; its exit code is looked at each time.
$ErrorActionPreference = 'Continue'
Set-Location -LiteralPath (Split-Path -Parent $PSScriptRoot)
$build = "build\$Preset"
$bad = 0

cmake --preset $Preset @Configure
if ($LASTEXITCODE -eq 0) { cmake --build --preset $Preset }
if ($LASTEXITCODE -ne 0) { Write-Host "does not build: $Preset"; exit 1 }

$admin = ([Security.Principal.WindowsPrincipal][Security.Principal.WindowsIdentity]::GetCurrent()).IsInRole(
    [Security.Principal.WindowsBuiltInRole]::Administrator)
$who = if ($admin) { 'admin' } else { 'user' }
$record = Join-Path (Resolve-Path -LiteralPath $build) "on_windows.$who.txt"
Set-Content -LiteralPath $record -Encoding UTF8 -Value ('lumodir on {0}, {1}, {2}, {3}' -f
    [Environment]::OSVersion.VersionString, $Preset, $who, (Get-Date))
function Note([string]$text) {
    Write-Host $text
    Add-Content -LiteralPath $record -Encoding UTF8 -Value $text
}

# The experiments come first: should the day end early, they are what nothing else can tell.
if ($Part -ne 'tests') {
    $lumodir = (Resolve-Path -LiteralPath "$build\bin\lumodir.exe").Path
    Push-Location -LiteralPath $build
    & powershell -ExecutionPolicy Bypass -File (Join-Path $PSScriptRoot 'experiments.ps1') -Lumodir $lumodir
    $code = $LASTEXITCODE
    Pop-Location
    if ($code -ne 0) { $bad++ }
    Note "experiments: exit code $code"
}

# From below upwards, so that the first program that fails tells the layer; what a program of ours does not decide comes
# last. The ..._como_windows are not among them: they imitate what is there now.
if ($Part -ne 'experiments') {
    foreach ($name in 'companions', 'frame', 'paths', 'listings', 'system', 'files', 'exports', 'dll', 'hpp', 'cli', 'estado') {
        $xml = "$build\resultados\$name.xml"
        Remove-Item -LiteralPath $xml -ErrorAction SilentlyContinue
        ctest --test-dir $build -R "^$name`$" --no-tests=error --output-on-failure *> "$build\on_windows.$who.$name.log"
        $code = $LASTEXITCODE
        if (-not (Test-Path -LiteralPath $xml)) {
            $bad++
            Note "${name}: ended with $code and told no cases; see on_windows.$who.$name.log"
            continue
        }
        $cases = @(([xml](Get-Content -LiteralPath $xml -Raw -Encoding UTF8)).SelectNodes('//testcase'))
        $failed = @($cases | Where-Object { $_.SelectSingleNode('failure') })
        $skipped = @($cases | Where-Object { $_.SelectSingleNode('skipped') })
        Note ('{0}: {1} cases, {2} failed, {3} skipped' -f $name, $cases.Count, $failed.Count, $skipped.Count)
        if ($code -ne 0) { $bad++ }
        foreach ($case in $failed) { Note ('  FAILED  {0}.{1}' -f $case.GetAttribute('classname'), $case.GetAttribute('name')) }
        # What is skipped under Wine should run here, and the other way round: each with its reason.
        foreach ($case in $skipped) {
            $why = (($case.SelectSingleNode('skipped').GetAttribute('message')) -split "`n")[-1]
            Note ('  skipped {0}.{1}: {2}' -f $case.GetAttribute('classname'), $case.GetAttribute('name'), $why)
        }
    }
}
Note "$bad steps with something bad; record: $record"
exit [int]($bad -ne 0)
