#pragma once

#include <gio/gio.h>

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace voxtrel::platform {

struct VariantDeleter {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, VariantDeleter>;

// Where an accessible object lives: the bus name of its program, and its path there.
struct AtspiReference {
    std::string program;
    std::string path;

    bool IsNull() const { return path.empty() || path == "/org/a11y/atspi/null"; }
    bool operator==(const AtspiReference&) const = default;
};

// The desktop's bus for accessibility, with one deadline for all the calls of a look. Used by one thread.
class AtspiBus {
public:
    AtspiBus();
    ~AtspiBus();
    AtspiBus(const AtspiBus&) = delete;
    AtspiBus& operator=(const AtspiBus&) = delete;

    // Starts a look: every call until the next one shares this time. Connects when there is no connection
    // yet; false without a bus.
    bool Begin(std::chrono::milliseconds deadline);

    // Whether a program has let a call of this look wait until the deadline.
    bool TimedOut() const { return timedOut_; }

    // Null when the call failed, and without asking once the deadline has passed. parameters may be floating
    // or null.
    Variant Call(const AtspiReference& object, const char* interface, const char* method,
                 GVariant* parameters, const char* replyType);
    // The value of a property, unpacked.
    Variant Property(const AtspiReference& object, const char* interface, const char* name);

    // The process behind a bus name; 0 when it is gone.
    unsigned ProcessOf(const std::string& program);

    // The object of this program that last said that it was selected or got the focus. Menus are found this
    // way: they are the children of no window.
    std::optional<AtspiReference> LastChosen(const std::string& program);

private:
    bool Connect();
    void Listen();
    static GDBusMessage* Filter(GDBusConnection* connection, GDBusMessage* message, gboolean incoming,
                                gpointer bus);

    GDBusConnection* connection_ = nullptr;
    std::chrono::steady_clock::time_point end_;
    bool timedOut_ = false;
    std::map<std::string, unsigned> processes_;

    std::mutex mutex_; // the filter runs on the connection's own thread
    std::map<std::string, std::string> chosen_;
};

// Tells the programs of this desktop that someone reads their accessible objects; undone by the other one,
// unless someone had told them before.
void AskForAccessibility();
void NoLongerAskForAccessibility();

} // namespace voxtrel::platform
