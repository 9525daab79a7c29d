#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the measuring programs share: samples, their median and spread, and the table of goals.
namespace kirolane::bench {

/// Measurements of one thing in one unit.
class Samples {
public:
    void Add(double value) { m_values.push_back(value); }
    [[nodiscard]] std::size_t Count() const { return m_values.size(); }
    [[nodiscard]] const std::vector<double>& Values() const { return m_values; } ///< in the order of Add
    [[nodiscard]] double Median() const;
    [[nodiscard]] double Smallest() const;
    [[nodiscard]] double Largest() const;
    /// The sample that this share, 0 to 1, does not exceed.
    [[nodiscard]] double Percentile(double share) const;
    /// "12.3 (11.9 to 13.0)" with the unit behind the median.
    [[nodiscard]] std::string Text(std::string_view unit) const;

private:
    std::vector<double> m_values;
};

/// The samples that a row's figure or its reference was taken from.
struct Series {
    std::string name; ///< "measured", "reference"
    std::string unit;
    std::vector<double> values;
};

/// One row of the table. A row without a goal only reports.
struct Row {
    std::string name;
    std::string figure;
    std::string reference;
    std::string goal;
    bool hasGoal = true;
    bool holds = true;
    std::vector<Series> series;
};

/// A ratio of two medians that must not exceed `most`.
Row RatioRow(std::string_view name, const Samples& measured, const Samples& reference, std::string_view unit,
             double most);
/// A difference of two medians that must not exceed `most`.
Row DifferenceRow(std::string_view name, const Samples& measured, const Samples& reference,
                  std::string_view unit, double most);
/// A figure that must stay below `limit`; `control` is what the machine does by itself.
Row LimitRow(std::string_view name, const Samples& measured, const Samples& control, std::string_view unit,
             double limit);
/// The median of `measured` must not exceed `median`, and no value of `furthest` `worst`.
Row MedianAndWorstRow(std::string_view name, const Samples& measured, const Samples& furthest,
                      std::string_view unit, double median, double worst);
/// The value that this share of the samples does not exceed must stay below `limit`.
Row PercentileRow(std::string_view name, const Samples& measured, double share, std::string_view unit,
                  double limit);
/// A figure without a goal.
Row ReportRow(std::string_view name, const Samples& measured, std::string_view unit);

void Print(const Row& row);
/// Writes the rows with all samples, for bench/document.py: a line "row" and a line "values" for each series,
/// whose fields have tabs between. Throws RuntimeException if the file cannot be written.
void WriteFigures(const std::string& path, const std::vector<Row>& rows);

} // namespace kirolane::bench
