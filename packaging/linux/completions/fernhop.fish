# fish completion for fernhop

# Identifiers from a JSON list of Fernhop: __fernhop_identifiers FIELD COMMAND...
function __fernhop_identifiers
    fernhop $argv[2..-1] --json 2>/dev/null | string replace --filter --regex '^ *"'$argv[1]'": "(.*)",?$' '$1'
end

# Whether the words before the cursor, options aside, are these.
function __fernhop_after
    set --local words
    set --local skip 0
    for word in (commandline --tokenize --cut-at-cursor --current-process)[2..-1]
        if test $skip = 1
            set skip 0
        else if test "$word" = --source
            set skip 1
        else if not string match --quiet -- '-*' $word
            set --append words $word
        end
    end
    test "$words" = "$argv"
end

# Whether the words before the cursor begin with these and this many follow.
function __fernhop_argument
    set --local number $argv[1]
    set --local words (string match --invert -- '-*' (commandline --tokenize --cut-at-cursor --current-process)[2..-1])
    set --local prefix $argv[2..-1]
    test (count $words) -eq (math (count $prefix) + $number); or return 1
    test "$words[1..(count $prefix)]" = "$prefix"
end

complete --command fernhop --no-files
complete --command fernhop --short-option h --long-option help --description 'Print help and exit'
complete --command fernhop --condition __fernhop_after --long-option version --description 'Print the version and exit'

set --local commands \
    open 'Open links as if another application had opened them' \
    explain 'Show which browser a link would open in, and why' \
    match 'Test a pattern against URLs' \
    status 'Show the state of Fernhop' \
    apps 'List the installed applications' \
    browsers 'List the installed browsers' \
    url-rules 'List and change the URL rules' \
    app-rules 'List and change the app rules' \
    routing 'Turn App Routing on or off' \
    default 'Make a browser the system\'s default' \
    restore-on-quit 'Choose whether the default browser is restored on quit' \
    export 'Write all rules and settings' \
    import 'Replace all rules and settings' \
    dialog 'Open a dialog of the running Fernhop' \
    refresh 'Rescan the applications and browsers' \
    quit 'Quit the running Fernhop'
while set --query commands[1]
    complete --command fernhop --condition __fernhop_after --arguments $commands[1] --description $commands[2]
    set --erase commands[1..2]
end

complete --command fernhop --condition '__fernhop_after url-rules' --arguments 'list add edit remove'
complete --command fernhop --condition '__fernhop_after app-rules' --arguments 'list set remove'
complete --command fernhop --condition '__fernhop_after dialog' --arguments 'add-app-rules edit-app-rule add-url-rule edit-url-rule feedback'

for list in status apps browsers 'url-rules list' 'app-rules list' explain
    complete --command fernhop --condition "__fernhop_after $list" --long-option json --description 'Print one JSON document'
end
complete --command fernhop --condition '__fernhop_after explain' --long-option source --exclusive \
    --arguments '(__fernhop_identifiers bundleID apps)' --description 'The application that the link comes from'

complete --command fernhop --condition '__fernhop_argument 1 url-rules add' --arguments '(__fernhop_identifiers bundleID browsers)'
complete --command fernhop --condition '__fernhop_argument 0 url-rules edit' --arguments '(__fernhop_identifiers id url-rules list)'
complete --command fernhop --condition '__fernhop_argument 2 url-rules edit' --arguments '(__fernhop_identifiers bundleID browsers)'
complete --command fernhop --condition '__fernhop_argument 0 url-rules remove' --arguments '(__fernhop_identifiers id url-rules list)'
complete --command fernhop --condition '__fernhop_argument 0 app-rules set' --arguments '(__fernhop_identifiers bundleID apps)'
complete --command fernhop --condition '__fernhop_argument 1 app-rules set' --arguments '(__fernhop_identifiers bundleID browsers)'
complete --command fernhop --condition '__fernhop_argument 0 app-rules remove' --arguments '(__fernhop_identifiers sourceBundleID app-rules list)'
complete --command fernhop --condition '__fernhop_argument 0 dialog edit-app-rule' --arguments '(__fernhop_identifiers bundleID apps)'
complete --command fernhop --condition '__fernhop_argument 0 dialog edit-url-rule' --arguments '(__fernhop_identifiers id url-rules list)'
complete --command fernhop --condition '__fernhop_after routing; or __fernhop_after restore-on-quit' --arguments 'on off'
complete --command fernhop --condition '__fernhop_after default' --arguments '(__fernhop_identifiers bundleID browsers)'
complete --command fernhop --condition '__fernhop_after export; or __fernhop_after import' --force-files
