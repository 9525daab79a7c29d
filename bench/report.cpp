#include "report.h"

#include "contract/exceptions.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <fstream>

namespace kirolane::bench {

namespace {
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string Format(const char* format, ...) {
    char buffer[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    return buffer;
}

const char* ResultOf(const Row& row) {
    return !row.hasGoal ? "report" : row.holds ? "holds" : "short";
}

void Keep(Row& row, const char* series, const Samples& samples, std::string_view unit) {
    row.series.push_back({series, std::string(unit), samples.Values()});
}
} // namespace

double Samples::Median() const {
    if (m_values.empty())
        return 0.0;
    auto sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Samples::Smallest() const {
    return m_values.empty() ? 0.0 : *std::min_element(m_values.begin(), m_values.end());
}

double Samples::Largest() const {
    return m_values.empty() ? 0.0 : *std::max_element(m_values.begin(), m_values.end());
}

double Samples::Percentile(double share) const {
    if (m_values.empty())
        return 0.0;
    auto sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(sorted.size())));
    return sorted[std::clamp(rank, std::size_t{1}, sorted.size()) - 1];
}

std::string Samples::Text(std::string_view unit) const {
    return Format("%.4g %.*s (%.4g to %.4g, n=%zu)", Median(), static_cast<int>(unit.size()), unit.data(),
                  Smallest(), Largest(), Count());
}

Row RatioRow(std::string_view name, const Samples& measured, const Samples& reference, std::string_view unit,
             double most) {
    const double ratio = reference.Median() > 0 ? measured.Median() / reference.Median() : 0.0;
    Row row;
    row.name = name;
    row.figure = Format("%.2f x; ", ratio) + measured.Text(unit);
    row.reference = reference.Text(unit);
    row.goal = Format("<= %.4g x", most);
    row.holds = reference.Median() > 0 && ratio <= most;
    Keep(row, "measured", measured, unit);
    Keep(row, "reference", reference, unit);
    return row;
}

Row DifferenceRow(std::string_view name, const Samples& measured, const Samples& reference,
                  std::string_view unit, double most) {
    const double difference = measured.Median() - reference.Median();
    Row row;
    row.name = name;
    row.figure =
        Format("%+.4g %.*s; ", difference, static_cast<int>(unit.size()), unit.data()) + measured.Text(unit);
    row.reference = reference.Text(unit);
    row.goal = Format("<= +%.4g %.*s", most, static_cast<int>(unit.size()), unit.data());
    row.holds = measured.Count() > 0 && difference <= most;
    Keep(row, "measured", measured, unit);
    Keep(row, "reference", reference, unit);
    return row;
}

Row LimitRow(std::string_view name, const Samples& measured, const Samples& control, std::string_view unit,
             double limit) {
    Row row;
    row.name = name;
    row.figure = measured.Text(unit);
    row.reference = "machine: " + control.Text(unit);
    row.goal = Format("< %.4g %.*s", limit, static_cast<int>(unit.size()), unit.data());
    row.holds = measured.Count() > 0 && measured.Median() < limit;
    Keep(row, "measured", measured, unit);
    Keep(row, "reference", control, unit);
    return row;
}

Row MedianAndWorstRow(std::string_view name, const Samples& measured, const Samples& furthest,
                      std::string_view unit, double median, double worst) {
    Row row;
    row.name = name;
    row.figure = measured.Text(unit);
    row.reference = "worst reading " + furthest.Text(unit);
    row.goal = Format("<= %.4g, worst %.4g %.*s", median, worst, static_cast<int>(unit.size()), unit.data());
    row.holds = measured.Count() > 0 && measured.Median() <= median && furthest.Largest() <= worst;
    Keep(row, "measured", measured, unit);
    Keep(row, "worst", furthest, unit);
    return row;
}

Row PercentileRow(std::string_view name, const Samples& measured, double share, std::string_view unit,
                  double limit) {
    const double figure = measured.Percentile(share);
    Row row;
    row.name = name;
    row.figure = Format("%.4g %.*s; median ", figure, static_cast<int>(unit.size()), unit.data()) +
                 measured.Text(unit);
    row.goal = Format("< %.4g %.*s", limit, static_cast<int>(unit.size()), unit.data());
    row.holds = measured.Count() > 0 && figure < limit;
    Keep(row, "measured", measured, unit);
    return row;
}

Row ReportRow(std::string_view name, const Samples& measured, std::string_view unit) {
    Row row;
    row.name = name;
    row.figure = measured.Text(unit);
    row.hasGoal = false;
    Keep(row, "measured", measured, unit);
    return row;
}

void Print(const Row& row) {
    std::printf("%-34s | %-52s | %-44s | %-10s | %s\n", row.name.c_str(), row.figure.c_str(),
                row.reference.empty() ? "-" : row.reference.c_str(), row.hasGoal ? row.goal.c_str() : "-",
                ResultOf(row));
    std::fflush(stdout);
}

void WriteFigures(const std::string& path, const std::vector<Row>& rows) {
    std::ofstream file(path);
    for (const Row& row : rows) {
        file << "row\t" << row.name << '\t' << row.figure << '\t' << row.reference << '\t' << row.goal << '\t'
             << ResultOf(row) << '\n';
        for (const Series& series : row.series) {
            file << "values\t" << row.name << '\t' << series.name << '\t' << series.unit << '\t';
            for (const double value : series.values)
                file << value << ' ';
            file << '\n';
        }
    }
    file.close();
    if (!file)
        throw RuntimeException(path + " cannot be written");
}

} // namespace kirolane::bench
