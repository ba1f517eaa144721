# SPDX-License-Identifier: MIT
# unpack.py VMLINUZ VMLINUX: the kernel inside a compressed image for x86.
#
# A machine in software emulation would spend most of its start on this. The image says where the
# compressed kernel is: Documentation/arch/x86/boot.rst, setup_sects, payload_offset and
# payload_length.
import lzma
import struct
import sys

SECTOR = 512


def kernel_in(image):
    setup_sectors = image[0x1F1] or 4
    offset, length = struct.unpack_from("<II", image, 0x248)
    start = (setup_sectors + 1) * SECTOR + offset
    try:
        kernel = lzma.LZMADecompressor().decompress(image[start:start + length])
    except lzma.LZMAError as error:
        sys.exit(f"unpack.py: {sys.argv[1]} is not compressed by xz: {error}")
    if not kernel.startswith(b"\x7fELF"):
        sys.exit(f"unpack.py: {sys.argv[1]} holds no kernel in ELF")
    return kernel


def main():
    with open(sys.argv[1], "rb") as file:
        kernel = kernel_in(file.read())
    with open(sys.argv[2], "wb") as file:
        file.write(kernel)


if __name__ == "__main__":
    main()
