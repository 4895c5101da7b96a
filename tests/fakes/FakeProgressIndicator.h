// A progress indicator that records its starts and stops in the journal.
#pragma once

#include "platform/ProgressIndicator.h"
#include "tests/fakes/Journal.h"

namespace quillow {

class FakeProgressIndicator final : public ProgressIndicator {
public:
    explicit FakeProgressIndicator(Journal& journal)
        : journal_(journal) {}
    void startAnimation() override { journal_.add(QStringLiteral("startAnimation")); }
    void stopAnimation() override { journal_.add(QStringLiteral("stopAnimation")); }

private:
    Journal& journal_;
};

} // namespace quillow
