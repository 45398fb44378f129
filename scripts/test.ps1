<#
.SYNOPSIS
Builds everything with Visual Studio 2022 and runs the tests against the simulated platform.
.DESCRIPTION
Needs Visual Studio 2022 with CMake, and GoogleTest, toml++, CLI11, nlohmann-json and Valijson under one prefix. The tests
of what the library learns call the system's own pnputil.exe, which knows no simulated device: they are expected to fail.
.PARAMETER Libraries
The prefix of those libraries.
.PARAMETER Package
Packs what was built, into build\msvc\package, where the tests have passed.
.PARAMETER Filter
Runs only the tests whose name matches this regular expression.
.EXAMPLE
scripts\test.ps1 -Libraries C:\libraries -Filter PhoneWatcher
#>
param(
    [string] $Libraries,
    [switch] $Package,
    [string] $Filter
)
$ErrorActionPreference = 'Stop'
Set-Location (Split-Path $PSScriptRoot -Parent)

function Invoke-Step {
    param([string] $Program, [string[]] $Arguments)
    Write-Host "== $Program $Arguments"
    & $Program @Arguments
    if ($LASTEXITCODE) {
        Write-Host "== Failed with $LASTEXITCODE"
        exit $LASTEXITCODE
    }
}

$configure = @('--preset', 'msvc')
if ($Libraries) { $configure += "-DCMAKE_PREFIX_PATH=$Libraries" }
Invoke-Step cmake $configure
Invoke-Step cmake @('--build', '--preset', 'msvc')

$test = @('--preset', 'msvc')
if ($Filter) { $test += @('-R', $Filter) }
Invoke-Step ctest $test

if ($Package) {
    Invoke-Step cpack @('--config', 'build/msvc/CPackConfig.cmake', '-C', 'Release', '-B', "$PWD/build/msvc/package")
}
