// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <sys/types.h>

namespace ov::tests {

// A PostgreSQL of the tests' own, in a temporary folder, without rights and without a fixed port;
// started when the first test needs it, for all of the program.
class PostgresServer {
public:
    static PostgresServer& get();
    static constexpr const char* locked = "locked"; // a role that has to name its password

    // A new database, with these words of CREATE DATABASE; its name.
    std::string newDatabase(const std::string& how = {});
    // As a catalogue is opened: by the socket, and over the network of this machine.
    std::string place(const std::string& database, const std::string& role = "postgres") const;
    std::string networkPlace(const std::string& database) const;
    // Several statements; warnings and the first value of the last of them, or what is wrong.
    std::string run(const std::string& database, const std::string& sql,
                    const std::string& role = "postgres") const;

    // As when the machine fails; then it does not run.
    void crash();
    void start();
    // Takes neither connections nor what is to be cancelled.
    void hang(bool hangs) const;
    // Whether it speaks TLS to those who connect from now on, with a certificate of its own.
    void encrypt(bool encrypts) const;
    // No file of it may grow beyond, as on a full disk; for those who connect from now on.
    void limitFiles(rlim_t bytes) const;

private:
    PostgresServer();
    ~PostgresServer();
    bool answers() const;

    std::filesystem::path folder_;
    int port_ = 0;
    pid_t process_ = 0;
    int databases_ = 0;
};

} // namespace ov::tests
