# Cross-compiles for a machine that stores the most significant byte first; what is built runs under
# qemu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(CMAKE_C_COMPILER s390x-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER s390x-linux-gnu-g++)
find_program(VLX_QEMU NAMES qemu-s390x)
set(CMAKE_CROSSCOMPILING_EMULATOR ${VLX_QEMU} -L /usr/s390x-linux-gnu)
# Libraries that are headers alone describe themselves in a folder of the machine that builds.
set(CMAKE_PREFIX_PATH /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake)
