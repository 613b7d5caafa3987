// Runs a fuzz target without libFuzzer (the gcc build): every seed file once, then a bounded
// number of deterministic mutations of them, within a time budget.
//
//   <target>_replay [--mutations N] [--seconds S] [--max-size BYTES] <file or directory>...
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

struct OPTIONS {
    long mutations = 20000;
    double seconds = 120;
    std::size_t maxSize = 8192;
    std::vector<std::string> paths;
};

bool ParseOptions(int argc, char** argv, OPTIONS& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (arg == "--mutations" && hasValue)
            options.mutations = std::strtol(argv[++i], nullptr, 10);
        else if (arg == "--seconds" && hasValue)
            options.seconds = std::strtod(argv[++i], nullptr);
        else if (arg == "--max-size" && hasValue)
            options.maxSize = std::strtoul(argv[++i], nullptr, 10);
        else if (!arg.empty() && arg[0] == '-')
            return false;
        else
            options.paths.emplace_back(arg);
    }
    return !options.paths.empty() && options.maxSize > 0;
}

std::string ReadAll(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<std::string> LoadSeeds(const std::vector<std::string>& paths)
{
    std::vector<std::string> seeds;
    for (const std::string& p : paths) {
        const std::filesystem::path path(p);
        if (std::filesystem::is_directory(path)) {
            std::vector<std::filesystem::path> files;
            for (const auto& entry : std::filesystem::directory_iterator(path)) {
                if (entry.is_regular_file())
                    files.push_back(entry.path());
            }
            std::sort(files.begin(), files.end());  // the same order on every run
            for (const auto& file : files)
                seeds.push_back(ReadAll(file));
        } else {
            seeds.push_back(ReadAll(path));
        }
    }
    return seeds;
}

void Run(const std::string& input)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

// Bytes that mean something to the lexer or the decoders.
constexpr std::string_view kInteresting = "$!@*,:;\r\n-.0123456789ARMEGPNLQZ#";

std::string Mutate(const std::vector<std::string>& seeds, std::mt19937_64& random, std::size_t maxSize)
{
    const auto pick = [&](std::size_t n) { return n == 0 ? 0 : static_cast<std::size_t>(random() % n); };
    const std::string& seed = seeds[pick(seeds.size())];
    // A window of the seed keeps each run short and still spans several units.
    const std::size_t length = std::min(seed.size(), 1 + pick(maxSize));
    std::string data = seed.substr(pick(seed.size() - length + 1), length);
    const int operations = 1 + static_cast<int>(pick(4));
    for (int op = 0; op < operations; ++op) {
        const std::size_t at = pick(data.size() + 1);
        switch (pick(7)) {
        case 0:
            if (at < data.size())
                data[at] = static_cast<char>(data[at] ^ (1 << pick(8)));
            break;
        case 1:
            if (at < data.size())
                data[at] = static_cast<char>(random());
            break;
        case 2: data.insert(at, 1, kInteresting[pick(kInteresting.size())]); break;
        case 3: data.erase(at, pick(16)); break;
        case 4: data.insert(at, data.substr(pick(data.size() + 1), pick(64))); break;
        case 5: data.resize(at); break;
        case 6: {
            const std::string& other = seeds[pick(seeds.size())];
            data.insert(at, other.substr(pick(other.size() + 1), pick(256)));
            break;
        }
        }
    }
    if (data.size() > maxSize)
        data.resize(maxSize);
    return data;
}

}  // namespace

int main(int argc, char** argv)
{
    OPTIONS options;
    if (!ParseOptions(argc, argv, options)) {
        std::fprintf(stderr, "usage: %s [--mutations N] [--seconds S] [--max-size BYTES] <file or directory>...\n", argv[0]);
        return 2;
    }
    const std::vector<std::string> seeds = LoadSeeds(options.paths);
    if (seeds.empty()) {
        std::fprintf(stderr, "no seed files found\n");
        return 1;
    }
    for (const std::string& seed : seeds)
        Run(seed);

    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(options.seconds);
    std::mt19937_64 random(20240601);
    long done = 0;
    for (; done < options.mutations; ++done) {
        if ((done & 255) == 0 && std::chrono::steady_clock::now() > deadline)
            break;
        Run(Mutate(seeds, random, options.maxSize));
    }
    std::printf("%zu seeds, %ld mutations%s\n", seeds.size(), done,
                done < options.mutations ? " (time budget reached)" : "");
    return 0;
}
