// File boxes from zenity, started as a child process with its arguments as
// they are (no shell reads them, so no name needs quoting) and read back
// through a pipe: the chosen path and a newline on success, exit status 1
// when the player cancels.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "platform/platform.h"

extern char** environ;

namespace Platform {

namespace {

// The program's standard output when it ran and exited with status 0.
bool runProgram(const std::vector<std::string>& arguments, std::string& output) {
    int channel[2];
    if (pipe2(channel, O_CLOEXEC) != 0) return false;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, channel[1], STDOUT_FILENO);
    // The toolkit's warnings are no business of the game's terminal.
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::vector<char*> argv;
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t child = 0;
    const int spawned = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(channel[1]);
    if (spawned != 0) {
        ::close(channel[0]);
        return false;
    }
    char buffer[4096];
    for (ssize_t got; (got = read(channel[0], buffer, sizeof buffer)) != 0;) {
        if (got > 0)
            output.append(buffer, static_cast<std::size_t>(got));
        else if (errno != EINTR)
            break;
    }
    ::close(channel[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// zenity writes a filter as "Levels | *.rill *.txt" and splits it at the bar.
std::string filterArgument(const std::pair<std::string, std::string>& filter) {
    std::string description = filter.first, patterns = filter.second;
    for (char& c : description)
        if (c == '|') c = '/';
    for (char& c : patterns)
        if (c == ';') c = ' ';
    return "--file-filter=" + description + " | " + patterns;
}

}  // namespace

std::string showFileBox(const FileBox& box) {
    std::vector<std::string> arguments = {"zenity", "--file-selection", "--title=" + box.title};
    if (box.save) {
        arguments.push_back("--save");
        arguments.push_back("--confirm-overwrite");
    }
    if (!box.initialDirectory.empty()) {
        // A trailing slash opens the folder itself rather than naming a file in it.
        std::error_code error;
        const std::filesystem::path folder =
            std::filesystem::absolute(resolvePath(box.initialDirectory), error);
        if (!error) arguments.push_back("--filename=" + (folder / "").string());
    }
    for (const auto& filter : box.filters) arguments.push_back(filterArgument(filter));
    std::string output;
    if (!runProgram(arguments, output)) return {};
    while (!output.empty() && (output.back() == '\n' || output.back() == '\r')) output.pop_back();
    return output;
}

}  // namespace Platform
