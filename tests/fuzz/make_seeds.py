#!/usr/bin/env python3
"""Writes the seeds of the fuzz corpora: hand-made headers, blocks and scripts, and
copies of the shipped data files and the reference record."""
import os, shutil, struct

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.normpath(os.path.join(HERE, '..', '..'))

def put(target, name, data):
    d = os.path.join(HERE, 'corpus', target)
    os.makedirs(d, exist_ok=True)
    with open(os.path.join(d, name), 'wb') as f:
        f.write(data if isinstance(data, bytes) else data.encode('latin-1'))

def header(model, samples, layout=1, mem=1, serial=1234, scale=1, status=0):
    h = bytearray(22)
    h[0] = mem
    h[1], h[2] = serial & 255, serial >> 8
    ticks = 9830  # a tenth of a day
    if layout == 1:
        h[3:11] = b'\xff' * 8
        h[11:15] = struct.pack('<I', ticks)
        h[15] = status
        h[16] = model
        h[17], h[18] = (samples - 1) & 255, (samples - 1) >> 8
        h[21] = scale
    else:
        h[10:14] = struct.pack('<I', ticks)
        h[14] = status
        h[16] = model
        h[17], h[18], h[19] = (samples - 1) & 255, ((samples - 1) >> 8) & 255, (samples - 1) >> 16
    return bytes(h)

def block(samples, layout=1):
    out = bytearray()
    for i in range(samples):
        if layout == 1:
            out.append((40 + 3 * i) % 250)
        else:
            v = (2048 + 20 * 16 + i) * 16
            out += struct.pack('<H', v & 0xffff)
    return bytes(out)

# Header plus block: model codes of both layouts, one byte for Fahrenheit between them.
for model in (16, 17, 18, 19, 20, 22, 24, 32, 40):
    put('header_block', 'model%d' % model, header(model, 30) + b'\x00' + block(30))
for model in (64, 65, 66):
    put('header_block', 'model%d_fahrenheit' % model, header(model, 30, layout=2) + b'\x01' + block(30, 2))
put('header_block', 'halffills', header(17, 2048, mem=0) + b'\x00' + block(1024))

# The serial script: let time pass, answer the live poll with two bytes, the header
# request with an acknowledge and 22 bytes, then ask for a download and answer it.
def script(model, layout=1):
    live = b'\x01\x02\x50\x01' if layout == 1 else b'\x01\x02\x40\x15'
    h = header(model, 12, layout=layout)
    blk = block(12, layout)
    if len(blk) % 2:
        blk += b'\x00'
    return (b'\xc2' + live + b'\x03\x0b' + h + b'\xc2' + b'\x80' + b'\x03\x0b' + h +
            b'\x03' + bytes([len(blk) // 2]) + blk + b'\xc5' + live + b'\xc5')
put('serial', 'download17', script(17))
put('serial', 'download16', script(16))
put('serial', 'download64', script(64, 2))
put('serial', 'silence', b'\xff\xff')
put('serial', 'noise', b'\x45\x10' + bytes(range(16)) + b'\xc3')

# logger1.ini: the settings, eleven probe memories and the scale tables.
ini = ['"[PORT etc]"', '"comm port =  1"', '"language =  1"', '"baud =  1200"',
       '"Fahrenheit =  0"', '"US Date Format =  0"', '"[probe data]"']
ini += [',,"",""'] * 11 + [',,,,,,,'] * 62 + ['"","","","","","","",""']
put('settings', 'first_start', '\r\n'.join(ini) + '\r\n')
ini2 = list(ini)
ini2[7] = '1,2,"CT-50","A rms"'
ini2[20] = '0,100,4,20,0,0,"%","x"'
put('settings', 'probes_and_scales', '\r\n'.join(ini2) + '\r\n')

# loglang.txt: a small two-language table, and the shipped one.
lang = '"2","5"\n"English","Deutsch"\n"help/en.html","help/de.html"\n'
lang += ''.join('"en%d","de%d"\n' % (n, n) for n in range(1, 6))
put('loglang', 'two_languages', lang)
shutil.copy(os.path.join(ROOT, 'data', 'loglang.txt'), os.path.join(HERE, 'corpus', 'loglang', 'shipped'))

os.makedirs(os.path.join(HERE, 'corpus', 'probes'), exist_ok=True)
shutil.copy(os.path.join(ROOT, 'data', 'probes.dat'), os.path.join(HERE, 'corpus', 'probes', 'shipped'))
put('probes', 'bad_factor', open(os.path.join(ROOT, 'data', 'probes.dat'), encoding='latin-1').read()
    .replace(',4\n', ',four\n', 1).replace(',4\r\n', ',four\r\n', 1))

ref = open(os.path.join(ROOT, 'tests', 'data', 'reference_record.txt'), 'rb').read()
put('record_file', 'reference_rev02', ref)
lines = ref.split(b'\r\n')
rev01 = b'\r\n'.join([lines[0], b'"rev01"', lines[2], b','.join(lines[3:10])] + lines[10:])
put('record_file', 'reference_rev01', rev01)
put('record_file', 'short', b'"loggerfile"\r\n"rev02"\r\n3\r\n')

# Profile files: the dialog's number in the first byte, then the file.
def profile(tag, unit, entries):
    rows = ['"%s","rev01","%s"' % (tag, unit)] + ['"%s"' % e for e in entries]
    return '\r\n'.join(rows) + '\r\n'
put('profile', 'custom', '\x00' + profile('customfile', 'm/s', ['1.5', '', '-2'] + [''] * 8))
put('profile', '100mv', '\x01' + profile('10vfile', 'mV', ['0', '50', '100'] + [''] * 8))
put('profile', '420', '\x03' + profile('4to20file', 'bar', ['4', '', '', '', '20'] + [''] * 12))
put('profile', 'wrong_tag', '\x02' + profile('customfile', 'V', ['1'] * 11))
put('profile', 'short', '\x00"customfile","rev01","x"\r\n"1"\r\n')
