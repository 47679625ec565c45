#include "platform/linux/atspi_bus.h"

#include <algorithm>

namespace voxtrel::platform {
namespace {

constexpr char kRegistry[] = "org.a11y.atspi.Registry";
constexpr char kObjectEvents[] = "org.a11y.atspi.Event.Object";
constexpr std::size_t kManyPrograms = 200;

// The states whose changes tell where in a menu the user is.
constexpr const char* kChosenStates[] = {"selected", "focused"};

bool askedForAccessibility = false;

GDBusConnection* SessionBus()
{
    GDBusConnection* const session = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    // A server whose desktop ends says so itself.
    if (session)
        g_dbus_connection_set_exit_on_close(session, FALSE);
    return session;
}

std::string AccessibilityBusAddress(int timeoutMs)
{
    std::string address;
    GDBusConnection* const session = SessionBus();
    if (!session)
        return address;
    const Variant reply(g_dbus_connection_call_sync(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus",
                                                    "GetAddress", nullptr, G_VARIANT_TYPE("(s)"),
                                                    G_DBUS_CALL_FLAGS_NONE, timeoutMs, nullptr, nullptr));
    if (reply) {
        const char* text = nullptr;
        g_variant_get(reply.get(), "(&s)", &text);
        address = text;
    }
    g_object_unref(session);
    return address;
}

constexpr int kStatusTimeoutMs = 2000;

std::optional<bool> AccessibilityIsEnabled(GDBusConnection* session)
{
    const Variant reply(g_dbus_connection_call_sync(
        session, "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", "org.a11y.Status", "IsEnabled"), G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NONE,
        kStatusTimeoutMs, nullptr, nullptr));
    if (!reply)
        return std::nullopt;
    GVariant* value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    const Variant owned(value);
    return g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) && g_variant_get_boolean(value);
}

void EnableAccessibility(GDBusConnection* session, bool enabled)
{
    const Variant reply(g_dbus_connection_call_sync(
        session, "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
        g_variant_new("(ssv)", "org.a11y.Status", "IsEnabled", g_variant_new_boolean(enabled)), nullptr,
        G_DBUS_CALL_FLAGS_NONE, kStatusTimeoutMs, nullptr, nullptr));
}

} // namespace

AtspiBus::AtspiBus() = default;

AtspiBus::~AtspiBus()
{
    if (connection_)
        g_object_unref(connection_);
}

bool AtspiBus::Begin(std::chrono::milliseconds deadline)
{
    end_ = std::chrono::steady_clock::now() + deadline;
    timedOut_ = false;
    if (connection_ && g_dbus_connection_is_closed(connection_)) {
        g_object_unref(connection_);
        connection_ = nullptr;
    }
    return connection_ || Connect();
}

bool AtspiBus::Connect()
{
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
    const std::string address = AccessibilityBusAddress(std::max(1, static_cast<int>(left.count())));
    if (address.empty())
        return false;
    constexpr auto kFlags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    connection_ = g_dbus_connection_new_for_address_sync(address.c_str(), kFlags, nullptr, nullptr, nullptr);
    if (!connection_)
        return false;
    g_dbus_connection_set_exit_on_close(connection_, FALSE);
    processes_.clear();
    Listen();
    return true;
}

void AtspiBus::Listen()
{
    g_dbus_connection_add_filter(connection_, Filter, this, nullptr);
    for (const char* state : kChosenStates) {
        const std::string rule = std::string("type='signal',interface='") + kObjectEvents +
                                 "',member='StateChanged',arg0='" + state + "'";
        Call({"org.freedesktop.DBus", "/org/freedesktop/DBus"}, "org.freedesktop.DBus", "AddMatch",
             g_variant_new("(s)", rule.c_str()), nullptr);
        const std::string event = std::string("object:state-changed:") + state;
        Call({kRegistry, "/org/a11y/atspi/registry"}, "org.a11y.atspi.Registry", "RegisterEvent",
             g_variant_new("(sass)", event.c_str(), nullptr, ""), nullptr);
    }
}

GDBusMessage* AtspiBus::Filter(GDBusConnection*, GDBusMessage* message, gboolean incoming, gpointer bus)
{
    if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_SIGNAL ||
        g_strcmp0(g_dbus_message_get_interface(message), kObjectEvents) != 0)
        return message;
    GVariant* const body = g_dbus_message_get_body(message);
    const char* const sender = g_dbus_message_get_sender(message);
    const char* const path = g_dbus_message_get_path(message);
    if (!body || !sender || !path || g_variant_n_children(body) < 2)
        return message;
    // The state, and 1 when it is on.
    const Variant on(g_variant_get_child_value(body, 1));
    if (!g_variant_is_of_type(on.get(), G_VARIANT_TYPE_INT32) || g_variant_get_int32(on.get()) != 1)
        return message;
    auto& self = *static_cast<AtspiBus*>(bus);
    const std::lock_guard lock(self.mutex_);
    if (self.chosen_.size() > kManyPrograms)
        self.chosen_.clear();
    self.chosen_[sender] = path;
    return message;
}

Variant AtspiBus::Call(const AtspiReference& object, const char* interface, const char* method,
                       GVariant* parameters, const char* replyType)
{
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
    if (left.count() <= 0 || timedOut_) {
        timedOut_ = true;
        if (parameters)
            g_variant_unref(g_variant_ref_sink(parameters));
        return nullptr;
    }
    GError* error = nullptr;
    Variant reply(g_dbus_connection_call_sync(
        connection_, object.program.c_str(), object.path.c_str(), interface, method, parameters,
        replyType ? G_VARIANT_TYPE(replyType) : nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
        static_cast<int>(left.count()), nullptr, &error));
    if (error) {
        timedOut_ = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
                    g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY);
        g_error_free(error);
    }
    return reply;
}

Variant AtspiBus::Property(const AtspiReference& object, const char* interface, const char* name)
{
    const Variant reply =
        Call(object, "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", interface, name), "(v)");
    if (!reply)
        return nullptr;
    GVariant* value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    return Variant(value);
}

unsigned AtspiBus::ProcessOf(const std::string& program)
{
    // A bus name is never given twice.
    if (const auto known = processes_.find(program); known != processes_.end())
        return known->second;
    const Variant reply = Call({"org.freedesktop.DBus", "/org/freedesktop/DBus"}, "org.freedesktop.DBus",
                               "GetConnectionUnixProcessID", g_variant_new("(s)", program.c_str()), "(u)");
    if (!reply)
        return 0;
    guint32 process = 0;
    g_variant_get(reply.get(), "(u)", &process);
    if (processes_.size() > kManyPrograms)
        processes_.clear();
    processes_[program] = process;
    return process;
}

std::optional<AtspiReference> AtspiBus::LastChosen(const std::string& program)
{
    const std::lock_guard lock(mutex_);
    const auto found = chosen_.find(program);
    if (found == chosen_.end())
        return std::nullopt;
    return AtspiReference{program, found->second};
}

void AskForAccessibility()
{
    GDBusConnection* const session = SessionBus();
    if (!session)
        return;
    if (const auto enabled = AccessibilityIsEnabled(session); enabled && !*enabled) {
        EnableAccessibility(session, true);
        askedForAccessibility = true;
    }
    g_object_unref(session);
}

void NoLongerAskForAccessibility()
{
    if (!askedForAccessibility)
        return;
    GDBusConnection* const session = SessionBus();
    if (!session)
        return;
    EnableAccessibility(session, false);
    g_object_unref(session);
}

} // namespace voxtrel::platform
