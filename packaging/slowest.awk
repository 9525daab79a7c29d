# Passes ctest's lines on, with the ten slowest tests named ahead of its summary.
{
    if (/^ *[0-9]+\/[0-9]+ Test +#[0-9]+: .* sec *$/)
        seconds[$4] = $(NF - 1)
    if (/tests passed, .* tests failed/ && length(seconds) > 0) {
        print "\nThe slowest tests, in seconds:"
        for (shown = 0; shown < 10 && length(seconds) > 0; ++shown) {
            slowest = ""
            for (name in seconds)
                if (slowest == "" || seconds[name] + 0 > seconds[slowest] + 0)
                    slowest = name
            printf "%8.2f  %s\n", seconds[slowest], slowest
            delete seconds[slowest]
        }
        print ""
    }
    print
    fflush()
}
