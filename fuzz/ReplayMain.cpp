// Runs a fuzz target once over each of the files and folders that are named: the seeds and the kept findings, in the
// ordinary test run and with any compiler. A finding ends the process, the last name printed being its file.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize);

namespace
{

int g_nFiles = 0;

void Replay(const fs::path& path)
{
    ++g_nFiles;
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    const std::string strInput{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(strInput.data()), strInput.size());
}

}  // namespace

int main(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i) {
        if (fs::is_regular_file(argv[i])) Replay(argv[i]);
        if (!fs::is_directory(argv[i])) continue;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(argv[i]))
            if (entry.is_regular_file()) Replay(entry.path());
    }
    std::printf("%d inputs\n", g_nFiles);
    return g_nFiles > 0 ? 0 : 1;  // an empty corpus tests nothing
}
