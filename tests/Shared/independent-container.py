#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints a sealed container as C++ string lines, made with Python's hashlib and hmac and the
openssl command alone: the one embedded in ContainerTest.cpp, which no code of this library made."""
import hashlib
import hmac
import subprocess

passphrase = "Grüße, 世界 🔑".encode()
plaintext = b"The quick brown fox jumps over the lazy dog."
encryption_salt = bytes(range(0x10, 0x18))
hmac_salt = bytes(range(0x20, 0x28))
iv = bytes(range(0x30, 0x40))


def key(salt):
    return hashlib.pbkdf2_hmac("sha1", passphrase, salt, 10000, 32)


header = b"\x3a\x2d\x29\x00" + encryption_salt + hmac_salt + iv
ciphertext = subprocess.run(
    ["openssl", "enc", "-aes-256-cbc", "-K", key(encryption_salt).hex(), "-iv", iv.hex()],
    input=plaintext, stdout=subprocess.PIPE, check=True).stdout
body = header + ciphertext
container = body + hmac.new(key(hmac_salt), body, hashlib.sha256).digest()
text = container.hex()
for start in range(0, len(text), 64):
    print(f'"{text[start:start + 64]}"')
