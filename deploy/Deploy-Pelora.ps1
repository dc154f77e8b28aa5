# SPDX-License-Identifier: Apache-2.0
#requires -Version 5.1
<#
.SYNOPSIS
Puts into a directory what the Pelora administration extension needs there: the groupware's schema, and the
registration of its tabs and wizards with the administration console.

.DESCRIPTION
For sites without Linux; pelora-deploy does the same. It uses what Windows brings along: the directory interfaces of
the platform, and ldifde for the schema. Everything can be run again at any time: what is there already is left
alone. -WhatIf says what would be changed.

.PARAMETER Command
Schema: add the groupware's attributes and classes, which cannot be taken back. Register: enter the tabs and wizards
for every language of the console. Unregister: take that back.

.PARAMETER Server
Full name of a domain controller; the schema master, for the schema. Without it, one that Windows finds.

.PARAMETER SchemaFile
Apply this schema in place of the one that comes along.

.PARAMETER DisplayFile
Register what this file says in place of the one that comes along.

.EXAMPLE
.\Deploy-Pelora.ps1 Register -WhatIf
#>
[CmdletBinding(SupportsShouldProcess = $true)]
param(
    [Parameter(Mandatory = $true, Position = 0)]
    [ValidateSet('Schema', 'Register', 'Unregister')]
    [string]$Command,
    [string]$Server = '',
    [string]$SchemaFile = '',
    [string]$DisplayFile = ''
)

Set-StrictMode -Version 2.0
$ErrorActionPreference = 'Stop'

# Classes whose specifiers come with tabs for several objects of their own. The others fall back on default-Display,
# until they have a value.
$ShippedMultiselect = @('user', 'inetOrgPerson')
$Multiselect = 'adminMultiselectPropertyPages'
$Identifier = '\{[0-9A-Fa-f-]{36}\}'

function Get-EntryPath {
    param([string]$Name)
    if ($Server -ne '') { return "LDAP://$Server/$Name" }
    return "LDAP://$Name"
}

# The entry of a name, over a connection that is signed and sealed.
function Open-Entry {
    param([string]$Name)
    $path = Get-EntryPath -Name $Name
    return New-Object -TypeName System.DirectoryServices.DirectoryEntry -ArgumentList @(
        $path, $null, $null, [System.DirectoryServices.AuthenticationTypes]'Secure, Sealing, Signing')
}

# The same, or nothing when there is no such entry.
function Get-Entry {
    param([string]$Name)
    if (-not [System.DirectoryServices.DirectoryEntry]::Exists((Get-EntryPath -Name $Name))) { return $null }
    return Open-Entry -Name $Name
}

# The values of an attribute as texts. Callers put @( ) around it: one value comes alone.
function Get-AttributeValue {
    param($Entry, [string]$Attribute)
    if ($null -eq $Entry) { return }
    foreach ($value in $Entry.Properties[$Attribute]) { [string]$value }
}

# What a value is known by: the component's identifier, whatever its order number.
function Get-ValueIdentifier {
    param([string]$Value)
    if ($Value -match $Identifier) { return $Matches[0].ToLowerInvariant() }
    return $Value
}

# One more than the highest order number.
function Get-NextNumber {
    param([string[]]$Values)
    $highest = 0
    foreach ($value in $Values) {
        if ($value -match '^(\d+),') { $highest = [Math]::Max($highest, [int]$Matches[1]) }
    }
    return $highest + 1
}

# The values to be added, in order, so that every wanted one is there: with the numbers that follow those present.
function Get-MissingValue {
    param([string]$Attribute, [string[]]$Wanted, [string[]]$Present, [string[]]$Fallback)
    $known = @(foreach ($value in $Present) { Get-ValueIdentifier -Value $value })
    $missing = @(foreach ($value in $Wanted) {
            if ($known -notcontains (Get-ValueIdentifier -Value $value)) { $value }
        })
    if ($missing.Count -eq 0) { return }
    $added = @()
    if ($Attribute -eq $Multiselect -and @($Present).Count -eq 0) {
        # A value of its own ends the fallback: what it gave is to stay.
        $added += @($Fallback)
    }
    foreach ($value in $missing) {
        $number = Get-NextNumber -Values (@($Present) + $added)
        $added += $value.Replace('@NEXT@', [string]$number)
    }
    return $added
}

# What display-specifiers.ldif says of each class: whether its specifier is ours, and the values of its attributes.
function Read-DisplayFile {
    param([string]$Path)
    $record = $null
    foreach ($line in [System.IO.File]::ReadAllLines($Path)) {
        if ($line -eq '' -or $line -eq '-' -or $line.StartsWith('#')) { continue }
        $name, $value = $line -split ': ', 2
        if ($name -eq 'dn') {
            if ($null -ne $record) { $record }
            if ($value -notmatch '^CN=([^,]+)-Display,') { throw "${Path}: $line" }
            $record = @{ Class = $Matches[1]; IsOurs = $false; Attributes = @{} }
        }
        elseif ($name -eq 'changetype') { $record.IsOurs = ($value -eq 'add') }
        elseif ($name -ne 'add' -and $name -ne 'objectClass') {
            if (-not $record.Attributes.ContainsKey($name)) { $record.Attributes[$name] = @() }
            $record.Attributes[$name] += $value
        }
    }
    if ($null -ne $record) { $record }
}

function Add-Specifier {
    [CmdletBinding(SupportsShouldProcess = $true)]
    param($Folder, $Record, [string[]]$Fallback)
    $name = "CN=$($Record.Class)-Display,$($Folder.Properties['distinguishedName'][0])"
    $entry = Get-Entry -Name $name
    if ($null -eq $entry -and -not $Record.IsOurs) {
        Write-Warning -Message "left out, for there is no such specifier: $name"
        return
    }
    $isNew = $null -eq $entry
    $changes = @{}
    foreach ($attribute in $Record.Attributes.Keys) {
        $wanted = @($Record.Attributes[$attribute])
        if (-not $isNew -and $wanted[0] -notmatch $Identifier) { continue }
        $present = @(Get-AttributeValue -Entry $entry -Attribute $attribute)
        $added = @(Get-MissingValue -Attribute $attribute -Wanted $wanted -Present $present -Fallback $Fallback)
        if ($added.Count -gt 0) { $changes[$attribute] = $added }
    }
    if ($changes.Count -eq 0 -or -not $PSCmdlet.ShouldProcess($name, 'Register')) { return }
    if ($isNew) { $entry = $Folder.Children.Add("CN=$($Record.Class)-Display", 'displaySpecifier') }
    foreach ($attribute in $changes.Keys) {
        foreach ($value in $changes[$attribute]) { [void]$entry.Properties[$attribute].Add($value) }
    }
    $entry.CommitChanges()
    Write-Output -InputObject "changed: $name"
}

function Remove-Specifier {
    [CmdletBinding(SupportsShouldProcess = $true)]
    param($Folder, $Record, [string[]]$Fallback)
    $name = "CN=$($Record.Class)-Display,$($Folder.Properties['distinguishedName'][0])"
    $entry = Get-Entry -Name $name
    if ($null -eq $entry) { return }
    $changes = @{}
    $remains = $false
    foreach ($attribute in $Record.Attributes.Keys) {
        $wanted = @($Record.Attributes[$attribute])
        if ($wanted[0] -notmatch $Identifier) { continue }
        $ours = @(foreach ($value in $wanted) { Get-ValueIdentifier -Value $value })
        $present = @(Get-AttributeValue -Entry $entry -Attribute $attribute)
        $removed = @(foreach ($value in $present) {
                if ($ours -contains (Get-ValueIdentifier -Value $value)) { $value }
            })
        $kept = @(foreach ($value in $present) { if ($removed -notcontains $value) { $value } })
        if ($attribute -eq $Multiselect -and $removed.Count -gt 0 -and $ShippedMultiselect -notcontains $Record.Class) {
            # The fallback's values, which came with ours.
            if ((@($kept | Sort-Object) -join "`n") -eq (@($Fallback | Sort-Object) -join "`n")) {
                $removed = $present
                $kept = @()
            }
        }
        if ($removed.Count -gt 0) { $changes[$attribute] = $removed }
        if ($kept.Count -gt 0) { $remains = $true }
    }
    if ($changes.Count -eq 0 -or -not $PSCmdlet.ShouldProcess($name, 'Unregister')) { return }
    if ($Record.IsOurs -and -not $remains) {
        # The specifier came with the registration, and nobody else's pages stand in it.
        $Folder.Children.Remove($entry)
    }
    else {
        foreach ($attribute in $changes.Keys) {
            foreach ($value in $changes[$attribute]) { $entry.Properties[$attribute].Remove($value) }
        }
        $entry.CommitChanges()
    }
    Write-Output -InputObject "changed: $name"
}

# ldifde goes on where something is there already (-k); what else fails, it says and ends.
function Add-Schema {
    [CmdletBinding(SupportsShouldProcess = $true)]
    param()
    $arguments = @('-i', '-k', '-f', $SchemaFile, '-c', '@SCHEMA@', '#schemaNamingContext', '-j', $env:TEMP)
    if ($Server -ne '') { $arguments += @('-s', $Server) }
    if (-not $PSCmdlet.ShouldProcess('the schema', "ldifde $($arguments -join ' ')")) { return }
    & "$env:SystemRoot\System32\ldifde.exe" $arguments
    if ($LASTEXITCODE -ne 0) { throw "ldifde failed ($LASTEXITCODE); $env:TEMP\ldif.err says why" }
}

if ($SchemaFile -eq '') { $SchemaFile = Join-Path -Path $PSScriptRoot -ChildPath 'pelora-schema.ldf' }
if ($DisplayFile -eq '') { $DisplayFile = Join-Path -Path $PSScriptRoot -ChildPath 'display-specifiers.ldif' }
if ($Command -eq 'Schema') {
    Add-Schema
    return
}
$records = @(Read-DisplayFile -Path $DisplayFile)
$root = Open-Entry -Name 'RootDSE'
$specifiers = Open-Entry -Name "CN=DisplaySpecifiers,$($root.Properties['configurationNamingContext'][0])"
foreach ($folder in $specifiers.Children) {
    if ($folder.SchemaClassName -ne 'container') { continue }
    $default = Get-Entry -Name "CN=default-Display,$($folder.Properties['distinguishedName'][0])"
    $fallback = @(Get-AttributeValue -Entry $default -Attribute $Multiselect)
    foreach ($record in $records) {
        if ($Command -eq 'Register') { Add-Specifier -Folder $folder -Record $record -Fallback $fallback }
        else { Remove-Specifier -Folder $folder -Record $record -Fallback $fallback }
    }
}
