#pragma once

#include <QTranslator>

namespace kirolane::qt {

/// The toolkit's own words that a user of the program meets, in Japanese: those of the folder dialog and of
/// the context menu of a text field; and the names of keys as they stand on them.
class Words : public QTranslator {
public:
    using QTranslator::QTranslator;

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int n) const override;
};

} // namespace kirolane::qt
