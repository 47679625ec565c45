#include "ovaccserver/looker.h"

#include <thread>
#include <utility>

namespace voxtrel::ovaccserver {

Looker::Looker(MakeSource makeSource, Deliver deliver)
    : makeSource_(std::move(makeSource)), deliver_(std::move(deliver))
{
    StartThread();
}

Looker::~Looker() { requests_->Post(std::nullopt); }

void Looker::StartThread()
{
    requests_ = std::make_shared<Mailbox<std::optional<Request>>>();
    std::thread([requests = requests_, makeSource = makeSource_, deliver = deliver_] {
        const std::unique_ptr<platform::AccessibleSource> source = makeSource();
        while (const std::optional<Request> request = requests->Wait())
            deliver({request->look, source->ObjectAt(request->point, request->deadline)});
    }).detach();
}

void Looker::Look(int number, platform::ScreenPoint point, std::chrono::milliseconds deadline)
{
    requests_->Post(Request{number, point, deadline});
}

void Looker::Abandon()
{
    requests_->Post(std::nullopt);
    StartThread();
}

} // namespace voxtrel::ovaccserver
