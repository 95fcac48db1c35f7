// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Stands in for passt between libvirt and the real one, which is the next "passt" in the PATH.
//
// passt opens its forwarded ports before QEMU has connected to it, and ends when somebody uses one of them too early:
// the machine is left without a network. A client that connects again and again, as one does whose machine was killed,
// always is too early. This one waits for QEMU first and then becomes passt, which gets the connection with it. The
// process keeps the id that libvirt knows.

#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Options
{
    std::string socketPath;
    std::string pidFile;
    std::vector<std::string> tcpPorts;
    std::vector<std::string> udpPorts;
    std::vector<std::string> forPasst; // what is passed on
};

[[noreturn]] void fail(const std::string &text)
{
    std::fprintf(stderr, "passt: %s\n", text.c_str());
    std::exit(EXIT_FAILURE);
}

std::string systemError()
{
    return std::strerror(errno);
}

Options parse(const std::vector<std::string> &arguments)
{
    Options options;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const auto value = [&] {
            if (std::next(argument) == arguments.end())
                fail(*argument + " needs a value");
            return *++argument;
        };
        if (*argument == "--socket")
            options.socketPath = value();
        else if (*argument == "--pid")
            options.pidFile = value();
        else if (*argument == "--one-off")
            continue; // goes without saying for a connection that is handed over
        else if (*argument == "--tcp-ports")
            options.forPasst.insert(options.forPasst.end(), {"--tcp-ports", options.tcpPorts.emplace_back(value())});
        else if (*argument == "--udp-ports")
            options.forPasst.insert(options.forPasst.end(), {"--udp-ports", options.udpPorts.emplace_back(value())});
        else
            options.forPasst.push_back(*argument);
    }
    return options;
}

std::string realPasst()
{
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe");
    const char *path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::filesystem::path candidate = std::filesystem::path(folder) / "passt";
        std::error_code error;
        if (access(candidate.c_str(), X_OK) == 0 && !std::filesystem::equivalent(candidate, self, error))
            return candidate;
    }
    fail("the program passt is not installed");
}

// Ports that somebody else has are found here, where libvirt still reads what is wrong. Takes "address/port:guest port"
// and lists of it with commas; what it does not understand is passt's to judge.
void checkPorts(const std::string &specification, int type)
{
    std::istringstream parts(specification);
    for (std::string part; std::getline(parts, part, ',');) {
        const auto slash = part.find('/');
        if (slash == std::string::npos)
            continue;
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(std::strtoul(part.c_str() + slash + 1, nullptr, 10)));
        if (inet_pton(AF_INET, part.substr(0, slash).c_str(), &address.sin_addr) != 1)
            continue;
        const int probe = socket(AF_INET, type | SOCK_CLOEXEC, 0);
        const int on = 1;
        setsockopt(probe, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        if (probe < 0 || bind(probe, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
            fail("the port " + std::to_string(ntohs(address.sin_port)) + " cannot be used: " + systemError());
        close(probe);
    }
}

int listenOn(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path)
        fail("the socket's path is empty or too long: " + path);
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    unlink(path.c_str());
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (listener < 0 || bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0
        || chmod(path.c_str(), S_IRUSR | S_IWUSR) != 0 || listen(listener, 1) != 0) {
        fail("cannot listen on " + path + ": " + systemError());
    }
    return listener;
}

void detach()
{
    setsid();
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (nowhere < 0)
        return;
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere, stream);
}

// Returns when QEMU connects. A driver that ends before, killed with the IDE that it is in, starts no QEMU any more.
void waitForQemu(int listener, int driver)
{
    std::array<pollfd, 2> events{pollfd{listener, POLLIN, 0}, pollfd{driver, POLLIN, 0}};
    while (poll(events.data(), events.size(), -1) < 0) {
        if (errno != EINTR)
            _exit(EXIT_FAILURE);
    }
    if (events[0].revents == 0)
        _exit(EXIT_SUCCESS);
}

[[noreturn]] void becomePasst(const std::string &program, const Options &options, int listener, int driver)
{
    waitForQemu(listener, driver);
    int connection = -1;
    do
        connection = accept(listener, nullptr, nullptr); // handed over, so not closed on exec
    while (connection < 0 && errno == EINTR);
    if (connection < 0)
        _exit(EXIT_FAILURE);

    std::vector<std::string> arguments{program, "--foreground", "--fd", std::to_string(connection)};
    arguments.insert(arguments.end(), options.forPasst.begin(), options.forPasst.end());
    std::vector<char *> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    execv(program.c_str(), pointers.data());
    _exit(EXIT_FAILURE);
}

} // namespace

int main(int argc, char *argv[])
{
    const Options options = parse({argv + 1, argv + argc});
    const std::string program = realPasst();
    for (const std::string &ports : options.tcpPorts)
        checkPorts(ports, SOCK_STREAM);
    for (const std::string &ports : options.udpPorts)
        checkPorts(ports, SOCK_DGRAM);
    const int listener = listenOn(options.socketPath);
    // Of one that cannot be watched, the end goes unnoticed.
    const int driver = static_cast<int>(syscall(SYS_pidfd_open, getppid(), 0));

    const pid_t child = fork();
    if (child < 0)
        fail("cannot start: " + systemError());
    if (child == 0) {
        detach();
        becomePasst(program, options, listener, driver);
    }
    if (!options.pidFile.empty() && !(std::ofstream(options.pidFile) << child << '\n' << std::flush))
        fail("cannot write " + options.pidFile);
    return EXIT_SUCCESS;
}
