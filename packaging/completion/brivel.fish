# Completion of brivel(1) in fish: brivel itself knows what may come.
function __brivel_complete
    set -l typed (commandline -ct)
    if set -l found (brivel --complete (commandline -opc)[2..-1] "$typed" 2>/dev/null)
        string join -- \n $found
    else
        __fish_complete_path $typed
    end
end
complete -c brivel -f -a '(__brivel_complete)'
