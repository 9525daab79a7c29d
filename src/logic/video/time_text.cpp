#include "logic/video/time_text.h"

#include "contract/numbers.h"
#include "contract/text.h"

namespace kirolane {

namespace {
std::string TwoDigits(std::int32_t field) {
    return (field < 10 ? "0" : "") + Str(field);
}
} // namespace

std::string TimeText(std::int32_t seconds) {
    const double t = seconds;
    const std::int32_t hours = ToInteger(t / 60.0 / 60.0) % 60;
    const std::int32_t minutes = ToInteger(t / 60.0) % 60;
    return TwoDigits(hours) + "：" + TwoDigits(minutes) + "：" + TwoDigits(seconds % 60);
}

} // namespace kirolane
