// A compiled stand-in engine for the runner tests.
//   probe fds ...    prints the numbers of its open descriptors above 2
//   probe <other>... writes its arguments and environment, NUL-separated, to
//                    the files "args" and "env" beside its own executable
#include <dirent.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

extern char **environ;

static bool writeAll(const std::string &path, char **items)
{
    FILE *file = std::fopen(path.c_str(), "wb");
    if (!file)
        return false;
    for (char **item = items; *item; ++item)
        std::fwrite(*item, 1, std::strlen(*item) + 1, file);
    return std::fclose(file) == 0;
}

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], "fds") == 0) {
        DIR *dir = opendir("/proc/self/fd");
        if (!dir)
            return 2;
        const int own = dirfd(dir);
        std::string list;
        while (dirent *entry = readdir(dir)) {
            if (entry->d_name[0] == '.')
                continue;
            const int fd = std::atoi(entry->d_name);
            if (fd > 2 && fd != own)
                list += std::to_string(fd) + " ";
        }
        closedir(dir);
        std::printf("fds:%s\n", list.c_str());
        return 0;
    }
    char self[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    if (length <= 0)
        return 2;
    self[length] = '\0';
    std::string folder(self);
    folder.erase(folder.rfind('/'));
    const bool ok = writeAll(folder + "/args", argv + 1) && writeAll(folder + "/env", environ);
    return ok ? 0 : 3;
}
