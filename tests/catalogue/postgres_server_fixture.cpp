// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "tests/catalogue/postgres_server.h"
#include "tests/child_process.h"

#include <arpa/inet.h>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <libpq-fe.h>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <thread>
#include <vector>

namespace ov::tests {

namespace fs = std::filesystem;

namespace {

// Where distributions put programs of a server; the newest version.
fs::path programFolder() {
    fs::path newest;
    std::error_code none;
    for (const auto& version : fs::directory_iterator("/usr/lib/postgresql", none))
        if (fs::exists(version.path() / "bin/initdb") && version.path() > newest)
            newest = version.path();
    if (newest.empty())
        throw std::runtime_error("no PostgreSQL server for the tests; .ci/setup installs it");
    return newest / "bin";
}

// Not as root, whom the server refuses.
pid_t begin(std::vector<std::string> words, const fs::path& log) {
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child != 0)
        return child;
    const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
    const bool isReady =
        dup2(file, STDOUT_FILENO) >= 0 && dup2(file, STDERR_FILENO) >= 0 && chdir("/") == 0 &&
        (geteuid() != 0 ||
         (setresgid(nobody, nobody, nobody) == 0 && setresuid(nobody, nobody, nobody) == 0));
    prctl(PR_SET_PDEATHSIG, SIGQUIT);
    if (isReady)
        execv(arguments[0], arguments.data());
    _exit(127);
}

void runToEnd(std::vector<std::string> words, const fs::path& log) {
    int status = 0;
    const std::string program = words.front();
    waitpid(begin(std::move(words), log), &status, 0);
    if (status != 0)
        throw std::runtime_error(program + " failed, see " + log.native());
}

int freePort() {
    const int connection = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    if (bind(connection, any, size) != 0 || getsockname(connection, any, &size) != 0)
        throw std::runtime_error("no free port");
    close(connection);
    return ntohs(address.sin_port);
}

} // namespace

PostgresServer& PostgresServer::get() {
    static PostgresServer server;
    return server;
}

PostgresServer::PostgresServer() {
    std::string pattern = (fs::temp_directory_path() / "ovsearch-server-XXXXXX").native();
    if (mkdtemp(pattern.data()) == nullptr ||
        (geteuid() == 0 && chown(pattern.c_str(), nobody, nobody) != 0))
        throw std::runtime_error("no folder for a server");
    folder_ = pattern;
    port_ = freePort();
    runToEnd({programFolder() / "initdb", "--pgdata", folder_ / "data", "--username", "postgres",
              "--auth", "trust", "--encoding", "UTF8", "--locale", "C", "--wal-segsize", "1",
              "--no-sync", "--no-instructions"},
             folder_ / "log");
    std::ofstream(folder_ / "data/pg_hba.conf")
        << "local all " << locked << " scram-sha-256\nlocal all all trust\n"
        << "host all all 127.0.0.1/32 trust\n";
    start();
}

PostgresServer::~PostgresServer() {
    crash();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void PostgresServer::start() {
    constexpr int mostTries = 1000;
    process_ = begin({programFolder() / "postgres", "-D", folder_ / "data", "-k", folder_, "-p",
                      std::to_string(port_), "-c", "listen_addresses=127.0.0.1", "-c", "fsync=off",
                      "-c", "log_statement=none", "-c", "max_wal_size=64MB"},
                     folder_ / "log");
    for (int i = 0; i < mostTries && !answers(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    if (!answers())
        throw std::runtime_error("the server does not begin, see " + folder_.native() + "/log");
}

void PostgresServer::crash() {
    kill(process_, SIGQUIT);
    waitpid(process_, nullptr, 0);
}

void PostgresServer::hang(bool hangs) const {
    kill(process_, hangs ? SIGSTOP : SIGCONT);
}

void PostgresServer::encrypt(bool encrypts) const {
    const std::string wanted = encrypts ? "on" : "off";
    if (encrypts)
        runToEnd({"/usr/bin/openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj",
                  "/CN=localhost", "-keyout", folder_ / "data/server.key", "-out",
                  folder_ / "data/server.crt"},
                 folder_ / "log");
    run("postgres", "ALTER SYSTEM SET ssl = " + wanted);
    run("postgres", "SELECT pg_reload_conf()");
    while (run("postgres", "SHOW ssl") != wanted)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

void PostgresServer::limitFiles(rlim_t bytes) const {
    const bool isDone = isTrueUnprivileged([&] { // only who it runs as may
        rlimit limit{};
        return prlimit(process_, RLIMIT_FSIZE, nullptr, &limit) == 0 &&
               (limit.rlim_cur = bytes, prlimit(process_, RLIMIT_FSIZE, &limit, nullptr) == 0);
    });
    if (!isDone)
        throw std::runtime_error("the server's files cannot be limited");
}

bool PostgresServer::answers() const {
    return PQping(place("postgres").c_str()) == PQPING_OK;
}

std::string PostgresServer::newDatabase(const std::string& how) {
    const std::string name = "db" + std::to_string(++databases_);
    if (const std::string said =
            run("postgres", "CREATE DATABASE " + name + " TEMPLATE template0 " + how);
        !said.empty())
        throw std::runtime_error(said);
    return name;
}

std::string PostgresServer::place(const std::string& database, const std::string& role) const {
    return "postgresql://" + role + "@/" + database + "?host=" + folder_.native() +
           "&port=" + std::to_string(port_);
}

std::string PostgresServer::networkPlace(const std::string& database) const {
    return "postgresql://postgres@127.0.0.1:" + std::to_string(port_) + "/" + database;
}

std::string PostgresServer::run(const std::string& database, const std::string& sql,
                                const std::string& role) const {
    const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(
        PQconnectdb(place(database, role).c_str()), PQfinish);
    std::string warnings;
    PQsetNoticeProcessor(
        connection.get(),
        [](void* to, const char* text) {
            if (std::string_view(text).starts_with("WARNING"))
                static_cast<std::string*>(to)->append(text);
        },
        &warnings);
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(
        PQexec(connection.get(), sql.c_str()), PQclear);
    const ExecStatusType state = PQresultStatus(result.get());
    if (state != PGRES_COMMAND_OK && state != PGRES_TUPLES_OK)
        return PQerrorMessage(connection.get());
    return warnings + (PQntuples(result.get()) > 0 ? PQgetvalue(result.get(), 0, 0) : "");
}

} // namespace ov::tests
