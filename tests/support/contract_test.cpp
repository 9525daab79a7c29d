#include "support/contract_test.h"

#include "contract/window.h"

namespace kirolane::tests {

ContractTest::ContractTest() : m_files(m_folder.MakeFolder("home"), m_folder.MakeFolder("application")) {
    EXPECT_EQ(m_files.Prepare(), "");
    m_runtime = std::make_unique<Runtime>(m_headless.windows, m_headless.media, m_files);
}

ContractTest::~ContractTest() = default;

void ContractTest::Do(const std::function<void()>& handler) {
    const auto forms = m_runtime->Forms().All();
    ASSERT_FALSE(forms.empty()) << "StartWith comes first";
    EXPECT_TRUE(m_runtime->DeliverNow(*forms.front(), "test", handler));
}

void ContractTest::Restart() {
    m_runtime.reset();
    m_headless.windows.Restart();
    m_runtime = std::make_unique<Runtime>(m_headless.windows, m_headless.media, m_files);
}

} // namespace kirolane::tests
