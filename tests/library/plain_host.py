"""A host in Python, on the plain names: what PlainHost.c does. plain_host.py LIBRARY WORK_DIR PASSWORD prints a
serial number a line."""

import ctypes
import sys
from ctypes import byref, c_bool, c_char, c_char_p, c_int, c_void_p

TOOLKIT_ZRTK, TOOLKIT_GPKI = 0, 1
MEDIA_HARDDISK = 1
CERTTYPE_ALL = 1 | 2 | 4


class LoadOpt(ctypes.Structure):
    _fields_ = [("nLibAPIType", c_int), ("szWorkDir", c_char * 1024), ("pPKCS11Context", c_void_p),
                ("szConfigPath", c_char * 1024), ("szConfigData", c_char * 8000)]


class LoadCertOpt(ctypes.Structure):
    _fields_ = [("nCertCAType", c_int), ("nCertUsageType", c_int), ("szCertPolicyIDs", c_char * 10000),
                ("szCertSerial", c_char * 1024), ("szCertKmSerial", c_char * 1024), ("szCertDN", c_char * 1024),
                ("szIssuerDN", c_char * 1024), ("bExpiredCertHide", c_bool), ("bCDROMHide", c_bool),
                ("bTokenBSCertHide", c_bool), ("nSMCardType", c_int), ("nPhoneType", c_int),
                ("nUbikeyVersion", c_int), ("szUbikeyWParam", c_char * 1024), ("szUbikeylParam", c_char * 1024),
                ("bPrivateO", c_bool), ("szSetPrivateCertO", c_char * 1024), ("szAddPrivateCertPath", c_char * 2048)]


class CertInfo(ctypes.Structure):
    """The first fields, and room for the rest."""
    _fields_ = [("nCertType", c_int), ("certificatesAndKeys", c_char * (4 * 4096)), ("lengths", c_int * 4),
                ("encryptedKeys", c_char * (2 * 4096)), ("encryptedLengths", c_int * 2), ("szVersion", c_char * 1024),
                ("szSerialNumber", c_char * 2048), ("rest", c_char * 34840)]


class BinStr(ctypes.Structure):
    _fields_ = [("pData", c_void_p), ("nLen", c_int)]


def expect(wanted, got, what):
    if got != wanted:
        sys.exit(f"{what} answered {got}, not {wanted}")


def print_serials(library, session):
    record = CertInfo()
    for index in range(library.CLP_GetCertCount(session)):
        expect(0, library.CLP_GetCertInfo(session, index, byref(record)), "CLP_GetCertInfo")
        print(record.szSerialNumber.decode("euc-kr"))


def open_first_key(library, session, password):
    keys = (c_void_p * 2)()
    lengths = (c_int * 2)()

    def at(array, i, size):
        return byref(array, i * size)

    pointer, number = ctypes.sizeof(c_void_p), ctypes.sizeof(c_int)
    expect(0, library.CLP_DecryptPriKeyData(session, 0, c_char_p(password), at(keys, 0, pointer),
                                            at(lengths, 0, number), at(keys, 1, pointer), at(lengths, 1, number)),
           "CLP_DecryptPriKeyData")
    expect(b"\x30", ctypes.string_at(keys[0], lengths[0])[:1], "the first byte of the key")
    for i in range(2):
        if keys[i]:
            expect(0, library.CLP_MemFree(session, at(keys, i, pointer)), "CLP_MemFree")


def list_certificates(library, work_directory, password):
    session = c_void_p()
    options = LoadOpt(nLibAPIType=TOOLKIT_ZRTK, szWorkDir=work_directory)
    expect(0, library.CLP_Initalize(byref(session), byref(options), None), "CLP_Initalize")
    expect(0, library.CLP_SetType(session, byref(LoadCertOpt(nCertCAType=CERTTYPE_ALL))), "CLP_SetType")
    expect(0, library.CLP_SetMediaType(session, MEDIA_HARDDISK, 0), "CLP_SetMediaType")
    expect(0, library.CLP_LoadCertList(session), "CLP_LoadCertList")
    print_serials(library, session)
    open_first_key(library, session, password)
    expect(0, library.CP_ClearCertData(session), "CP_ClearCertData")
    library.CLP_UnInitalize(session)


def encode(library, side, work_directory):
    context = c_void_p()
    plain, text = BinStr(), BinStr()
    expect(0, library.ZR_Initalize(byref(context), side, c_char_p(work_directory),
                                   c_char_p(b"libZRToolkitV30-v3.4.2.20.so")), "ZR_Initalize")
    for string in (plain, text):
        expect(0, library.ZR_BINSTR_Create(context, byref(string)), "ZR_BINSTR_Create")
    expect(0, library.ZR_BINSTR_SetData(context, c_char_p(b"quillgate"), 9, byref(plain)), "ZR_BINSTR_SetData")
    expect(0, library.Base64Encode(context, byref(plain), byref(text)), "Base64Encode")
    expect(b"cXVpbGxnYXRl", ctypes.string_at(text.pData, text.nLen), "the text")
    for string in (text, plain):
        expect(0, library.ZR_BINSTR_Delete(context, byref(string)), "ZR_BINSTR_Delete")
    library.ZR_Finish(context)


def main():
    path, work_directory, password = sys.argv[1:]
    library = ctypes.CDLL(path)
    list_certificates(library, work_directory.encode(), password.encode())
    for side in (TOOLKIT_ZRTK, TOOLKIT_GPKI):
        encode(library, side, work_directory.encode())


main()
