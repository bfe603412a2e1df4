#include "ConsoleCommand.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/signal_set.hpp>
#include <csignal>
#include <functional>
#include <iterator>
#include <stdexcept>

#include "AccessGuard.h"
#include "ConsoleApi.h"
#include "ConsoleBackend.h"
#include "Feed.h"
#include "FeedCollector.h"
#include "FramePump.h"
#include "HttpServer.h"
#include "JsonText.h"
#include "tvsim/TvSim.h"

namespace agentsim {

const char* const kConsoleHelp =
    "usage: agentsim [options] console [--port N] [--listen ADDRESS]\n"
    "\n"
    "The support console: a web page with the TV's live screen, a remote control, every command\n"
    "as a form, the device values, the viewer's remote-support menu, the agent's server and a\n"
    "live feed of the TV journal and the logs. agentsim prints the page's address, which carries\n"
    "an access token for this run. Ctrl-C (or SIGTERM, SIGHUP) stops it: it lets the calls under\n"
    "way finish, removes the TV's folder and exits with status 0.\n"
    "\n"
    "  --port N           the port (default 8080, or a free port when 8080 is taken; 0: any\n"
    "                     free port)\n"
    "  --listen ADDRESS   the IP address to listen on (default 127.0.0.1). The console controls\n"
    "                     a TV: listen elsewhere only on a network you trust.\n";

namespace {

uint16_t portArgument(const std::string& text) {
    size_t used = 0;
    unsigned long value = 0;
    try {
        value = std::stoul(text, &used);
    } catch (const std::exception&) {
        used = 0;
    }
    if (text.empty() || used != text.size() || text[0] == '-' || value > 65535) {
        throw std::invalid_argument("agentsim: --port needs a port number from 0 to 65535, not '" +
                                    text + "'");
    }
    return static_cast<uint16_t>(value);
}

// Ctrl-C, SIGTERM and SIGHUP stop the console gracefully while it runs; the handling agentsim had
// before comes back afterwards (the signal set alone would leave the default behind).
class StopSignals {
public:
    StopSignals(boost::asio::io_context& io, std::function<void()> stop) : signals_(io) {
        for (size_t i = 0; i < std::size(kStopSignals); ++i) {
            sigaction(kStopSignals[i], nullptr, &previous_[i]);
            signals_.add(kStopSignals[i]);
        }
        signals_.async_wait([stop = std::move(stop)](const boost::system::error_code& error, int) {
            if (!error) {
                stop();
            }
        });
    }
    ~StopSignals() {
        boost::system::error_code ignored;
        signals_.clear(ignored);
        for (size_t i = 0; i < std::size(kStopSignals); ++i) {
            sigaction(kStopSignals[i], &previous_[i], nullptr);
        }
    }
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

private:
    static constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP};
    boost::asio::signal_set signals_;
    struct sigaction previous_[std::size(kStopSignals)] = {};
};

}  // namespace

ConsoleSettings parseConsoleArguments(const std::vector<std::string>& arguments) {
    ConsoleSettings settings;
    for (size_t index = 0; index < arguments.size(); ++index) {
        const std::string& word = arguments[index];
        if (word != "--port" && word != "--listen") {
            throw std::invalid_argument("agentsim: console takes --port and --listen, not '" +
                                        word + "' (see agentsim console --help)");
        }
        if (index + 1 >= arguments.size()) {
            throw std::invalid_argument("agentsim: " + word + " needs a value");
        }
        const std::string& value = arguments[++index];
        if (word == "--port") {
            settings.port = portArgument(value);
        } else {
            boost::system::error_code error;
            boost::asio::ip::make_address(value, error);
            if (error) {
                throw std::invalid_argument("agentsim: --listen needs an IP address, not '" +
                                            value + "'");
            }
            settings.address = value;
            settings.addressGiven = true;
        }
    }
    return settings;
}

int runConsole(Agent& agent, const Options& options) {
    using namespace console;
    const ConsoleSettings settings = parseConsoleArguments(options.arguments);
    agent.initialize();
    // The command objects are made before several threads look commands up.
    agent.catalogue();

    boost::asio::io_context io;
    HttpServer server(io, settings.address, settings.port);
    const AccessGuard guard(settings.address, server.port(), newAccessToken());
    const auto feed = std::make_shared<Feed>();
    ConsoleBackend backend(agent, *feed);
    FeedCollector collector(agent, *feed, [&backend] { return simjson::compact(backend.state()); });
    FramePump frames(agent.plugin());
    ConsoleApi api(guard, backend, frames, *feed, collector);

    const StopSignals signals(io, [&] {
        server.stop();
        io.stop();
    });
    collector.start();
    frames.start();
    server.start(guard, api);

    if (settings.addressGiven) {
        std::fprintf(stderr,
                     "agentsim: warning: the console listens on %s. It controls a TV (its remote, "
                     "its settings, a factory reset): anyone who can reach this address and has "
                     "the token can use it.\n",
                     settings.address.c_str());
    }
    std::fprintf(agent.out(),
                 "agentsim console: %s\n"
                 "  Open this address in a browser; it carries this run's access token.\n"
                 "  The simulated TV's files: %s%s\n"
                 "  Ctrl-C stops the console.\n",
                 guard.entryUrl().c_str(), tvsim::Tv::instance().filesystemRoot().c_str(),
                 options.tv.root.empty() ? " (removed when the console stops)" : "");
    std::fflush(agent.out());

    io.run();

    frames.stop();
    api.stop();
    collector.stop();
    std::fprintf(agent.out(), "agentsim console: stopped\n");
    return 0;
}

}  // namespace agentsim
