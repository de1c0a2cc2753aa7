// Reads .dynsym of an ELF file (32- or 64-bit, host byte order) through the
// section headers: SHT_DYNSYM and the string table its sh_link names.
#include "elf_symbols.hpp"

#include <elf.h>

#include <cstring>
#include <fstream>
#include <stdexcept>

namespace zeda::host::detail {

namespace {

template <typename T>
T readAt(const std::vector<char>& file, std::size_t offset) {
  if (offset > file.size() || file.size() - offset < sizeof(T))
    throw std::runtime_error("truncated ELF file");
  T out;
  std::memcpy(&out, file.data() + offset, sizeof(T));
  return out;
}

template <typename Ehdr, typename Shdr, typename Sym, unsigned char (*Type)(unsigned char),
          unsigned char (*Bind)(unsigned char)>
std::vector<std::string> dynamicFunctions(const std::vector<char>& file) {
  const auto eh = readAt<Ehdr>(file, 0);
  std::vector<std::string> out;
  for (std::size_t i = 0; i < eh.e_shnum; ++i) {
    const auto sh = readAt<Shdr>(file, eh.e_shoff + i * eh.e_shentsize);
    if (sh.sh_type != SHT_DYNSYM || sh.sh_entsize == 0) continue;
    const auto strtab = readAt<Shdr>(file, eh.e_shoff + sh.sh_link * eh.e_shentsize);
    const std::size_t count = sh.sh_size / sh.sh_entsize;
    for (std::size_t n = 1; n < count; ++n) {
      const auto sym = readAt<Sym>(file, sh.sh_offset + n * sh.sh_entsize);
      const unsigned char type = Type(sym.st_info);
      const unsigned char bind = Bind(sym.st_info);
      if (sym.st_shndx == SHN_UNDEF || type != STT_FUNC || (bind != STB_GLOBAL && bind != STB_WEAK))
        continue;
      const std::size_t at = strtab.sh_offset + sym.st_name;
      if (at >= file.size()) throw std::runtime_error("ELF symbol name out of range");
      const char* begin = file.data() + at;
      const void* end = std::memchr(begin, '\0', file.size() - at);
      if (end == nullptr) throw std::runtime_error("unterminated ELF symbol name");
      out.emplace_back(begin, static_cast<const char*>(end));
    }
  }
  return out;
}

unsigned char type64(unsigned char info) { return ELF64_ST_TYPE(info); }
unsigned char bind64(unsigned char info) { return ELF64_ST_BIND(info); }
unsigned char type32(unsigned char info) { return ELF32_ST_TYPE(info); }
unsigned char bind32(unsigned char info) { return ELF32_ST_BIND(info); }

}  // namespace

std::vector<std::string> exportedFunctions(const std::string& path) {
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) throw std::runtime_error("cannot read " + path);
  // One read of the whole file: modules are a few megabytes at most.
  const std::streamoff size = in.tellg();
  if (size < 0) throw std::runtime_error("cannot read " + path);
  std::vector<char> file(static_cast<std::size_t>(size));
  in.seekg(0);
  if (!in.read(file.data(), size)) throw std::runtime_error("cannot read " + path);
  if (file.size() < EI_NIDENT || std::memcmp(file.data(), ELFMAG, SELFMAG) != 0) {
    throw std::runtime_error(path + " is not an ELF file");
  }
  if (file[EI_CLASS] == ELFCLASS64) {
    return dynamicFunctions<Elf64_Ehdr, Elf64_Shdr, Elf64_Sym, type64, bind64>(file);
  }
  if (file[EI_CLASS] == ELFCLASS32) {
    return dynamicFunctions<Elf32_Ehdr, Elf32_Shdr, Elf32_Sym, type32, bind32>(file);
  }
  throw std::runtime_error(path + ": unknown ELF class");
}

}  // namespace zeda::host::detail
