# Completion of dyadctx for PowerShell 5 and later, written by `dyadctx completion powershell`.
# Load it from a profile: dyadctx completion powershell | Out-String | Invoke-Expression

Register-ArgumentCompleter -Native -CommandName dyadctx -ScriptBlock {
    param($wordToComplete, $commandAst, $cursorPosition)

    # What may stand behind each command: its commands, its options with what is offered for their
    # values (nothing for a switch), and what is offered for its values by place.
    $rows = @{
@TABLE@
    }

    # A word as the tool would get it. Nothing in it is expanded.
    function Get-Word($element) {
        if ($element -is [System.Management.Automation.Language.StringConstantExpressionAst] -or
            $element -is [System.Management.Automation.Language.ExpandableStringExpressionAst]) {
            return $element.Value
        }
        return $element.Extent.Text
    }

    # In single quotes where PowerShell would not take the text as one plain word.
    function Get-Quoted([string]$text) {
        if ($text -match '^[\w./\\:-]+$' -and $text -notmatch '^-?\d') { return $text }
        $escaped = [System.Management.Automation.Language.CodeGeneration]::EscapeSingleQuotedStringContent($text)
        return "'" + $escaped + "'"
    }

    # The answer of the tool, one name per line. A file that VELDyadCtxOut names must not be written
    # by the way.
    function Get-Names([string[]]$arguments) {
        $output = $env:VELDyadCtxOut
        $trace = $env:VELDyadContextTrace
        $encoding = [Console]::OutputEncoding
        try {
            $env:VELDyadCtxOut = $null
            $env:VELDyadContextTrace = $null
            [Console]::OutputEncoding = [System.Text.Encoding]::UTF8
            & (Get-Command dyadctx -CommandType Application | Select-Object -First 1) @arguments 2>$null
        } catch {
        } finally {
            $env:VELDyadCtxOut = $output
            $env:VELDyadContextTrace = $trace
            [Console]::OutputEncoding = $encoding
        }
    }

    # The words before the cursor and those behind it.
    $before = @()
    $behind = @()
    foreach ($element in @($commandAst.CommandElements | Select-Object -Skip 1)) {
        if ($element.Extent.EndOffset -lt $cursorPosition) { $before += Get-Word $element }
        elseif ($element.Extent.StartOffset -ge $cursorPosition) { $behind += Get-Word $element }
    }

    # Takes a word in: the state's path becomes the command, given its values, awaited what the
    # option before it is waiting for.
    $state = @{ Path = ''; Row = $rows['']; Given = @(); Awaited = ''; Plain = $false; Database = $false }
    function Step-Word($state, [string]$word) {
        if ($state.Awaited) {
            $state.Awaited = ''
        } elseif ($state.Plain) {
            $state.Given += $word
        } elseif ($word -ceq '--') {
            $state.Plain = $true
        } elseif ($word -clike '-?*') {
            if ($word -ceq '--db-context') { $state.Database = $true }
            $place = [array]::IndexOf($state.Row.Options, $word)
            if ($place -ge 0) { $state.Awaited = $state.Row.Offers[$place] }
        } elseif ($state.Row.Commands -ccontains $word) {
            $state.Path = ($state.Path + ' ' + $word).Trim()
            $state.Row = $rows[$state.Path]
        } else {
            $state.Given += $word
        }
    }
    foreach ($word in $before) { Step-Word $state $word }

    $current = "$wordToComplete".Trim("'", '"')
    $names = @()
    $meanings = @()
    $prefix = ''
    $offer = ''
    if ($state.Awaited) {
        $offer = $state.Awaited
        $state.Awaited = ''
    } elseif (-not $state.Plain -and $current -clike '--*=*') {
        $prefix = $current.Substring(0, $current.IndexOf('=') + 1)
        $current = $current.Substring($prefix.Length)
        $place = [array]::IndexOf($state.Row.Options, $prefix.TrimEnd('='))
        if ($place -ge 0) { $offer = $state.Row.Offers[$place] }
    } elseif (-not $state.Plain -and $current -clike '-*') {
        $names = $state.Row.Options
        $meanings = $state.Row.Meanings
    } elseif ($state.Row.Commands.Count -gt 0) {
        $names = $state.Row.Commands
        $meanings = $state.Row.Summaries
    } else {
        $place = $state.Given.Count
        $last = $state.Row.Values.Count - 1
        if ($state.Row.Repeats -and $place -gt $last) { $place = $last }
        if ($place -ge 0 -and $place -le $last) { $offer = $state.Row.Values[$place] }
        $state.Given += ''
    }
    foreach ($word in $behind) { Step-Word $state $word }

    if ($offer -clike 'words *') {
        $names = $offer.Substring(6).Split(' ')
    } elseif ($offer -ceq 'contextfiles') {
        $names = @(Get-ChildItem -Path "$current*" -ErrorAction SilentlyContinue |
            Where-Object { $_.PSIsContainer -or $_.Name -clike '*.xml' } |
            ForEach-Object {
                $folder = $current -replace '[^/\\]*$', ''
                if ($_.PSIsContainer) { $folder + $_.Name + '/' } else { $folder + $_.Name }
            })
    } elseif ($offer -ceq 'contexts' -or $offer -ceq 'providers') {
        $kind = 'names'
        if ($offer -ceq 'providers') { $kind = 'providers' }
        $call = @('list', '--all', '--quiet', '--format', $kind)
        if ($state.Database -or $kind -ceq 'providers') { $call += '--db-context' }
        $place = [array]::IndexOf($state.Row.Values, 'contextfiles')
        if ($place -ge 0 -and $place -lt $state.Given.Count -and $state.Given[$place]) {
            $call += @('--', $state.Given[$place])
        }
        $names = @(Get-Names $call)
    }
    # For a file PowerShell itself offers what is there when nothing comes from here.

    for ($i = 0; $i -lt $names.Count; $i++) {
        $name = $names[$i]
        if (-not $name.StartsWith($current, [System.StringComparison]::Ordinal)) { continue }
        $meaning = $name
        if ($i -lt $meanings.Count -and $meanings[$i]) { $meaning = $meanings[$i] }
        [System.Management.Automation.CompletionResult]::new($prefix + (Get-Quoted $name), $name, 'ParameterValue', $meaning)
    }
}
