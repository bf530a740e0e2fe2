#include "lab/service/Web.h"

#include "lab/service/Archives.h"

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <sstream>
#include <thread>

namespace {

using httplib::Request;
using httplib::Response;

const std::string kArchivesPath = "/archives/";

/// A page before it goes out.
struct Page
{
    int status = 200;
    std::string type = "text/html; charset=utf-8";
    std::string body;
};

/// The address as text, an IPv4 one that came over an IPv6 socket in its own form.
std::string plainAddress(const std::string &address)
{
    static const std::string mapped = "::ffff:";
    return address.compare(0, mapped.size(), mapped) == 0 ? address.substr(mapped.size()) : address;
}

Page textPage(int status, const std::string &text)
{
    return {status, "text/plain; charset=utf-8", text};
}

Page htmlPage(const std::string &heading)
{
    return {200, "text/html; charset=utf-8", "<html><body><h1>" + heading + "</h1></body></html>\n"};
}

Page loginPage(const Site &site, const Request &request)
{
    if (request.method != "POST") {
        return textPage(405, "malformed request: not a POST\n");
    }
    for (const auto &[name, value] :
         {std::pair<const char *, std::string>("Content-Type", "application/x-www-form-urlencoded"),
          std::pair<const char *, std::string>("Content-Length", std::to_string(request.body.size()))}) {
        if (request.get_header_value_count(name) != 1 || request.get_header_value(name) != value) {
            return textPage(400, std::string("malformed request: ") + name + " is not " + value + "\n");
        }
    }
    const std::optional<Login> login = parseLoginForm(request.body);
    if (!login) {
        return textPage(400, "malformed request: the form is not username=...&password=...\n");
    }
    if (!isSubscriber(site.accounts, *login)) {
        return textPage(200, "invalid username or password");
    }
    Page page{200, "application/zip", profileArchive(site.accounts, login->user)};
    return page.body.empty() ? textPage(500, "no profile for this user\n") : page;
}

Page addressPage(const Site &site, const Request &request)
{
    const std::string address = plainAddress(request.remote_addr);
    const auto country = std::find_if(site.countries.begin(), site.countries.end(), [&](const auto &entry) {
        return address.compare(0, entry.first.size(), entry.first) == 0;
    });
    return htmlPage("You are in " + (country == site.countries.end() ? "Nowhere" : country->second) +
                    "? Your IP: " + address);
}

Page updatePage(const Site &site)
{
    const Offer offer = newestOffer(site.archives, site.version);
    const std::string signature =
        offer.signature.empty() ? "" : "    <signature>" + offer.signature + "</signature>\n";
    std::ostringstream entries;
    for (const char *system : {"windows", "macos"}) {
        entries << "  <update>\n    <system>" << system << "</system>\n    <version>" << offer.version
                << "</version>\n    <url>https://portal.korvan.example" << kArchivesPath << "korvan-" << offer.version
                << ".zip</url>\n"
                << signature << "    <message></message>\n  </update>\n";
    }
    return {200, "text/xml; charset=utf-8", "<?xml version=\"1.0\"?>\n<updates>\n" + entries.str() + "</updates>\n"};
}

Page archivePage(const Site &site, const std::string &name)
{
    const Page page{200, "application/zip", archiveBytes(site.archives, name)};
    return page.body.empty() ? textPage(404, "no such archive\n") : page;
}

Page findPage(const Site &site, const Request &request)
{
    if (request.path == "/api") {
        return loginPage(site, request);
    }
    if (request.path == "/testip.php") {
        return addressPage(site, request);
    }
    if (request.path == "/update.xml") {
        return updatePage(site);
    }
    if (request.path.compare(0, kArchivesPath.size(), kArchivesPath) == 0) {
        return archivePage(site, request.path.substr(kArchivesPath.size()));
    }
    static const std::vector<std::pair<std::string, std::string>> plainPages = {
        {"/", "Korvan help desk"},
        {"/anonymous_requests/new", "Ask the help desk"},
        {"/faqs.php", "Frequently asked questions"},
        {"/subscription", "Your subscription"},
    };
    for (const auto &[path, heading] : plainPages) {
        if (path == request.path) {
            return htmlPage(heading);
        }
    }
    return textPage(404, "no such page\n");
}

/// Resets the TCP connection of the request. The library keeps the socket to itself, so it is found by its peer.
void resetConnection(const Request &request)
{
    for (int descriptor = 3; descriptor < 1024; ++descriptor) {
        sockaddr_storage peer{};
        socklen_t length = sizeof peer;
        char host[NI_MAXHOST];
        char port[NI_MAXSERV];
        if (getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &length) == 0 &&
            getnameinfo(reinterpret_cast<sockaddr *>(&peer), length, host, sizeof host, port, sizeof port,
                        NI_NUMERICHOST | NI_NUMERICSERV) == 0 &&
            host == request.remote_addr && port == std::to_string(request.remote_port)) {
            sockaddr nobody{};
            nobody.sa_family = AF_UNSPEC;
            // Dissolving the association resets the connection at once.
            (void)connect(descriptor, &nobody, sizeof nobody);
        }
    }
}

void send(Response &response, const Page &page, const Order &order)
{
    response.status = page.status;
    if (page.body.empty()) {
        // A provider of nothing would leave the length unsaid and the client waiting for the connection's end.
        response.set_content("", page.type);
        return;
    }
    const auto body = std::make_shared<const std::string>(page.body);
    const std::size_t end = std::min(order.breaks.value_or(body->size()), body->size());
    const std::size_t slice = order.rate > 0 ? std::max<std::size_t>(order.rate / 10, 1) : 65536;
    const auto pause = std::chrono::milliseconds(order.rate > 0 ? 100 : 0);
    response.set_content_provider(
        body->size(), page.type, [=](std::size_t offset, std::size_t length, httplib::DataSink &sink) {
            const std::size_t count = offset < end ? std::min({slice, length, end - offset}) : 0;
            std::this_thread::sleep_for(pause);
            return count > 0 && sink.write(body->data() + offset, count);
        });
}

std::string wholeRequest(const Request &request)
{
    std::string bytes = request.method + " " + request.target + " " + request.version + "\r\n";
    for (const auto &[name, value] : request.headers) {
        // The library adds these itself.
        if (name != "REMOTE_ADDR" && name != "REMOTE_PORT" && name != "LOCAL_ADDR" && name != "LOCAL_PORT") {
            bytes.append(name).append(": ").append(value).append("\r\n");
        }
    }
    return bytes + "\r\n" + request.body;
}

void answer(const Site &site, Orders &orders, const Request &request, Response &response)
{
    const std::string line = plainAddress(request.remote_addr) + " " + request.method + " " + request.target;
    orders.record(request.path, line, wholeRequest(request));
    const Order order = orders.take(request.path).value_or(Order());
    if (order.stallSeconds > 0) {
        orders.stall(order.stallSeconds);
    }
    if (order.reset) {
        resetConnection(request);
        return;
    }
    Page page = findPage(site, request);
    if (order.body) {
        page = {200, page.status == 200 ? page.type : "application/octet-stream", *order.body};
    }
    page.status = order.status.value_or(page.status);
    page.body.resize(std::min(order.keep.value_or(page.body.size()), page.body.size()));
    send(response, page, order);
}

void control(Orders &orders, const Request &request, Response &response)
{
    static const std::string orderFor = "/answer";
    static const std::string seenAt = "/seen";
    const auto below = [&](const std::string &prefix) {
        return request.path.size() > prefix.size() && request.path.compare(0, prefix.size() + 1, prefix + "/") == 0;
    };
    Page page = textPage(200, "");
    std::string problem;
    if (request.method == "POST" && request.path == "/reset") {
        orders.reset();
    } else if (request.method == "PUT" && below(orderFor)) {
        const std::optional<Order> order = parseOrder(request.params, request.body, problem);
        if (order) {
            orders.place(request.path.substr(orderFor.size()), *order);
        }
    } else if (request.method == "DELETE" && below(orderFor)) {
        orders.takeBack(request.path.substr(orderFor.size()));
    } else if (request.method == "GET" && request.path == seenAt) {
        page.body = orders.seen();
    } else if (request.method == "GET" && below(seenAt)) {
        const std::optional<std::string> last = orders.lastSeen(request.path.substr(seenAt.size()));
        page = last ? textPage(200, *last) : textPage(404, "not seen yet\n");
    } else {
        problem = "no such control request";
    }
    send(response, problem.empty() ? page : textPage(400, problem + "\n"), Order());
}

/// Gives every request of every method to `handler`, and logs it.
void configure(httplib::Server &server, const httplib::Server::Handler &handler)
{
    server.Get(".*", handler).Post(".*", handler).Put(".*", handler).Delete(".*", handler).Patch(".*", handler);
    server.set_payload_max_length(std::size_t(256) << 20);
    server.set_tcp_nodelay(true);
    // A kept connection and a stalled page hold a thread each.
    server.new_task_queue = [] { return new httplib::ThreadPool(32); };
    server.set_logger([](const Request &request, const Response &response) {
        std::printf("%ld %s %s %s %d\n", static_cast<long>(std::time(nullptr)),
                    plainAddress(request.remote_addr).c_str(), request.method.c_str(), request.target.c_str(),
                    response.status);
        std::fflush(stdout);
    });
}

/// Binds every server to its port on all addresses, with IPv6 where the machine has it, and serves until one ends.
void serve(const std::vector<std::pair<httplib::Server *, int>> &servers)
{
    for (const auto &[server, port] : servers) {
        if (!server->is_valid() || (!server->bind_to_port("::", port) && !server->bind_to_port("0.0.0.0", port))) {
            std::fprintf(stderr, "lab_service: can not serve on port %d\n", port);
            return;
        }
    }
    std::puts("ready");
    std::fflush(stdout);
    std::vector<std::thread> threads;
    threads.reserve(servers.size());
    for (const auto &entry : servers) {
        threads.emplace_back([server = entry.first] { server->listen_after_bind(); });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
}

} // namespace

void serveSite(const Site &site)
{
    Orders orders;
    httplib::Server plain;
    httplib::SSLServer secure(site.certificate.c_str(), site.key.c_str());
    httplib::Server controls;
    if (secure.is_valid()) {
        for (httplib::Server *server : {&plain, static_cast<httplib::Server *>(&secure)}) {
            configure(*server,
                      [&](const Request &request, Response &response) { answer(site, orders, request, response); });
        }
    }
    configure(controls, [&](const Request &request, Response &response) { control(orders, request, response); });
    serve({{&plain, 80}, {&secure, 443}, {&controls, 9090}});
}

void serveSpeedTest()
{
    constexpr std::size_t fileSize = 8 << 20;
    const Page file{200, "application/octet-stream", std::string(fileSize, 'k')};
    httplib::Server server;
    configure(server, [&](const Request &request, Response &response) {
        send(response, request.path == "/korvantest.dat" ? file : textPage(404, "no such file\n"), Order());
    });
    serve({{&server, 8080}});
}
