#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace kelvo::test {

/// A folder of its own for one test, which takes its files along when it goes.
class ScratchFolder {
 public:
    explicit ScratchFolder(const std::filesystem::path& within = std::filesystem::temp_directory_path()) {
        std::string name = (within / "kelvo-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) ADD_FAILURE() << "no scratch folder " << name;
        path_ = name + '/';
        std::filesystem::permissions(path_, std::filesystem::perms(0755));
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms(0755), ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + name; }

    std::string Put(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ + name, std::ios::binary) << bytes;
        return path_ + name;
    }
    std::string Get(const std::string& name) const {
        std::ifstream in(path_ + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

 private:
    std::string path_;
};

/// The rights of files mean something only to an ordinary user; the superuser becomes one for a while.
class OrdinaryUser {
 public:
    OrdinaryUser() : user_(geteuid()) {
        constexpr uid_t Nobody = 65534;
        EXPECT_EQ(seteuid(user_ == 0 ? Nobody : user_), 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() { EXPECT_EQ(seteuid(user_), 0); }

 private:
    uid_t user_;
};

/// Takes a step while no file of this process may grow above some bytes: a full disk for one process.
template <typename Step>
void OnSmallDisk(rlim_t bytes, Step step) {
    const auto handler = signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit small{bytes, limit.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    step();
    setrlimit(RLIMIT_FSIZE, &limit);
    signal(SIGXFSZ, handler);
}

}  // namespace kelvo::test
