#include "engine/box/filter.h"

#include <bit>
#include <cerrno>
#include <cstddef>

#include <linux/seccomp.h>

namespace kirolane::box {

namespace {

static_assert(std::endian::native == std::endian::little, "an argument's lower half lies first");

sock_filter Do(unsigned code, std::uint32_t value) {
    return BPF_STMT(static_cast<std::uint16_t>(code), value);
}

/// Goes on if equal, else so many instructions further.
sock_filter Unless(std::uint32_t value, std::size_t skipped) {
    return BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 0, static_cast<std::uint8_t>(skipped));
}

sock_filter Load(std::size_t place) {
    return Do(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(place));
}

std::uint32_t Action(Answer answer) {
    return answer == Answer::Ask ? SECCOMP_RET_USER_NOTIF : SECCOMP_RET_ALLOW;
}

} // namespace

std::vector<sock_filter> MakeFilter(const std::vector<CallRule>& rules, std::uint32_t architecture) {
    std::vector<sock_filter> filter{
        Load(offsetof(seccomp_data, arch)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, architecture, 1, 0),
        Do(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        Load(offsetof(seccomp_data, nr)),
    };
    constexpr std::size_t one = 3; // instructions of a condition
    for (const CallRule& rule : rules) {
        std::size_t left = 1; // instructions up to the end of the row
        for (const Condition& condition : {rule.first, rule.second})
            left += condition.mask != 0 ? one : 0;
        const bool reloads = left > 1;
        left += reloads ? 1 : 0;
        filter.push_back(Unless(static_cast<std::uint32_t>(rule.number), left));
        for (const Condition& condition : {rule.first, rule.second}) {
            if (condition.mask == 0)
                continue;
            left -= one;
            filter.push_back(Load(offsetof(seccomp_data, args) + sizeof(std::uint64_t) * condition.argument +
                                  (condition.upper ? sizeof(std::uint32_t) : 0)));
            filter.push_back(Do(BPF_ALU | BPF_AND | BPF_K, condition.mask));
            filter.push_back(Unless(condition.value, left - 1)); // to the row's last one, the number again
        }
        filter.push_back(Do(BPF_RET | BPF_K, Action(rule.answer)));
        if (reloads)
            filter.push_back(Load(offsetof(seccomp_data, nr)));
    }
    filter.push_back(Do(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS));
    return filter;
}

} // namespace kirolane::box
