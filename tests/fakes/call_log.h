#pragma once

#include <string>
#include <utility>
#include <vector>

namespace voxtrel::tests {

// What fakes were asked, in order; one log given to several fakes shows the order among them.
class CallLog {
public:
    void Add(std::wstring call) { calls_.push_back(std::move(call)); }
    void Clear() { calls_.clear(); }
    const std::vector<std::wstring>& Calls() const { return calls_; }

private:
    std::vector<std::wstring> calls_;
};

} // namespace voxtrel::tests
