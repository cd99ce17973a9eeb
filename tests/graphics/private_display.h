// Programs the tests start on an X server of their own, so that no other
// test's window takes the keyboard focus from them, and environment variables
// set for the life of a test.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>

#include "support/content_support.h"

extern char** environ;

inline bool installed(const char* program) {
    return runCommand(std::string("command -v ") + program + " > /dev/null 2>&1") == 0;
}

// An environment variable set for the life of the object.
class Setting {
public:
    Setting(const char* variable, const std::string& value) : name(variable) {
        if (const char* old = std::getenv(variable)) previous = old;
        setenv(variable, value.c_str(), 1);
    }
    ~Setting() { previous ? setenv(name, previous->c_str(), 1) : unsetenv(name); }

private:
    const char* name;
    std::optional<std::string> previous;
};

// An X server of the test's own. Ending it also ends every program on it, so
// nothing waits for ever.
class PrivateDisplay {
public:
    PrivateDisplay() {
        int channel[2];
        if (pipe(channel) != 0) return;
        const std::string fd = std::to_string(channel[1]);
        const char* argv[] = {"Xvfb",        "-displayfd", fd.c_str(), "-screen", "0",
                              "1100x850x24", "-nolisten",  "tcp",      nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        if (posix_spawnp(&server, "Xvfb", &actions, nullptr, const_cast<char**>(argv), environ) != 0)
            server = 0;
        posix_spawn_file_actions_destroy(&actions);
        close(channel[1]);
        pollfd ready{channel[0], POLLIN, 0};
        char number[16] = {};
        if (server && poll(&ready, 1, 10000) == 1 && read(channel[0], number, sizeof number - 1) > 0)
            name = ":" + std::to_string(std::atoi(number));
        close(channel[0]);
    }
    ~PrivateDisplay() { end(); }
    void end() {
        if (server <= 0) return;
        kill(server, SIGTERM);
        waitpid(server, nullptr, 0);
        server = 0;
    }
    std::string name;  // empty when no server could be started

private:
    pid_t server = 0;
};

// Starts a program with the test's environment and working folder, its output
// thrown away; 0 when it could not be started.
inline pid_t startProgram(const std::string& path) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    char* argv[] = {const_cast<char*>(path.c_str()), nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, path.c_str(), &actions, nullptr, argv, environ) != 0) child = 0;
    posix_spawn_file_actions_destroy(&actions);
    return child;
}
