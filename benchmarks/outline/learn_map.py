#!/usr/bin/env python3
"""Teaches the network of SheetMap what sheets look like, and writes its weights as a C++ header.

    map_scenes a.bin 14000 100000; map_scenes b.bin 14000 200000     # scenes, see map/main.cpp
    map_scenes c.bin 16000 9400000 stacks
    learn_map.py MINUTES HEADER [--from HEADER] SCENES...

The weights in use: 12, 20 and 55 minutes with 48000 scenes, each `--from` what the last had learnt (19000 batches);
then 30 with 16000 others and as many stacks (13500 batches), and 14 with 14000 more (7000). One thread on a busy
machine.

The network is an encoder and decoder with sums across (Ronneberger, Fischer and Brox 2015; sums as in Chaurasia
and Culurciello 2017); learnt by AdamW (Loshchilov and Hutter 2019) with batch normalisation (Ioffe and Szegedy
2015), which is folded into the weights. Each fiftieth scene is kept aside and judged. Needs the packages of the
group `learn` (scripts/setup.sh).
"""
import math
import random
import re
import sys
import time

import numpy
import torch
from torch import nn
from torch.nn import functional

WIDTH, HEIGHT = 160, 120
CELLS = WIDTH * HEIGHT // 4
RECORD = 3 * WIDTH * HEIGHT + 3 * CELLS
BATCH = 32
# Name, channels in and out, step, distance of the taps. The order is that of SheetNet.cpp.
LAYERS = [
    ("look", 3, 8, 2, 1),
    ("fine", 8, 20, 2, 1),
    ("fineAgain", 20, 20, 1, 1),
    ("middle", 20, 28, 2, 1),
    ("middleAgain", 28, 28, 1, 1),
    ("coarse", 28, 28, 2, 1),
    ("coarseWide", 28, 28, 1, 2),
    ("coarseAgain", 28, 28, 1, 1),
    ("up", 28, 28, 1, 1),
    ("middleUp", 28, 20, 1, 1),
    ("fineUp", 20, 8, 1, 1),
    ("lookUp", 8, 8, 1, 1),
    ("map", 8, 2, 1, 1),
]


class Folding:
    """What a network of `layers` and their batch normalisations `norms`, the one named `last` without, becomes."""

    def folded(self):
        """Name, weights (out, in, 3, 3) and offsets of each layer as plain convolutions."""
        for name, layer in self.layers.items():
            weights = layer.weight.detach()
            if name == self.last:
                yield name, weights, layer.bias.detach()
                continue
            norm = self.norms[name]
            scale = norm.weight.detach() / torch.sqrt(norm.running_var + norm.eps)
            yield name, weights * scale[:, None, None, None], norm.bias.detach() - scale * norm.running_mean


class SheetNet(Folding, nn.Module):
    last = "map"

    def __init__(self):
        super().__init__()
        self.layers, self.norms = nn.ModuleDict(), nn.ModuleDict()
        for name, channels_in, channels_out, step, reach in LAYERS:
            self.layers[name] = nn.Conv2d(channels_in, channels_out, 3, step, reach, reach, bias=name == self.last)
            if name != self.last:
                self.norms[name] = nn.BatchNorm2d(channels_out)

    def run(self, name, x):
        x = self.layers[name](x)
        return x if name == self.last else functional.relu(self.norms[name](x))

    def forward(self, x):
        def larger(small, like):
            return functional.interpolate(small, scale_factor=2)[:, :, : like.shape[2], : like.shape[3]]

        look = self.run("look", x)
        fine = self.run("fineAgain", self.run("fine", look))
        middle = self.run("middleAgain", self.run("middle", fine))
        coarse = self.run("coarseWide", self.run("coarse", middle))
        coarse = self.run("up", self.run("coarseAgain", coarse))
        middle = middle + larger(coarse, middle)
        fine = fine + larger(self.run("middleUp", middle), fine)
        look = look + larger(self.run("fineUp", fine), look)
        return self.run("map", self.run("lookUp", look))


def light_normalised(x):
    """Of each picture: mean 0 and spread 1, but an even picture stays even. As SheetMap does."""
    x = x.float()
    mean = x.mean((1, 2, 3), keepdim=True)
    spread = (x - mean).pow(2).mean((1, 2, 3), keepdim=True).sqrt()
    return (x - mean) / spread.clamp(min=12)


def varied(look, wanted):
    """The same scenes mirrored, turned, in other colours, light and proportions."""
    look = look.float()
    if random.random() < 0.5:
        look, wanted = look.flip(3), wanted.flip(3)
    if random.random() < 0.5:
        look, wanted = look.flip(2), wanted.flip(2)
    if random.random() < 0.35:
        look, wanted = look.transpose(2, 3), wanted.transpose(2, 3)
    if random.random() < 0.35:
        high, wide = look.shape[2:]
        if random.random() < 0.5:
            high, wide = (96, wide) if wide > high else (high, 96)
        else:
            high, wide = (108, 160) if wide > high else (144, 108)
        look = functional.interpolate(look, (high, wide), mode="area")
        wanted = functional.interpolate(wanted, ((high + 1) // 2, (wide + 1) // 2), mode="area")
    look = look[:, torch.randperm(3)]
    count = look.shape[0]
    grey = (torch.rand(count, 1, 1, 1) < 0.1).float()
    look = grey * look.mean(1, keepdim=True) + (1 - grey) * look
    gamma = torch.exp(0.3 * torch.randn(count, 1, 1, 1))
    look = 255 * (look / 255).clamp(0, 1) ** gamma
    look = look * (1 + 0.1 * torch.randn(count, 3, 1, 1)) + torch.randn_like(look) * (3 * torch.rand(count, 1, 1, 1))
    return look.clamp(0, 255), wanted


def loss_of(said, wanted):
    inside, border, care = wanted[:, 0], wanted[:, 1], wanted[:, 2]
    of_inside = functional.binary_cross_entropy_with_logits(said[:, 0], inside, care)
    of_border = functional.binary_cross_entropy_with_logits(said[:, 1], border, care * (1 + 3 * border))
    return of_inside + of_border


class Scenes:
    def __init__(self, paths):
        self.parts = [numpy.memmap(path, numpy.uint8, "r").reshape(-1, RECORD) for path in paths]
        index = [(p, i) for p, part in enumerate(self.parts) for i in range(len(part))]
        self.kept = index[::50]
        self.used = [one for i, one in enumerate(index) if i % 50]

    def batch(self, places):
        records = torch.from_numpy(numpy.stack([self.parts[p][i] for p, i in places]))
        look = records[:, : 3 * WIDTH * HEIGHT].reshape(-1, 3, HEIGHT, WIDTH)
        wanted = records[:, 3 * WIDTH * HEIGHT :].reshape(-1, 3, HEIGHT // 2, WIDTH // 2).float() / 255
        return look, wanted


def judge(net, scenes):
    net.eval()
    shared, count, empty, false, loss = 0.0, 0, 0, 0, 0.0
    with torch.no_grad():
        for start in range(0, len(scenes.kept), BATCH):
            look, wanted = scenes.batch(scenes.kept[start : start + BATCH])
            said = net(light_normalised(look))
            loss += loss_of(said, wanted).item() * len(look)
            for one, truth in zip(said[:, 0] > 0, wanted):
                if truth[2].min() < 1:
                    continue
                sheet = truth[0] > 0.5
                if not sheet.any():
                    empty += 1
                    false += int(one.float().mean() > 0.02)
                    continue
                count += 1
                shared += ((one & sheet).sum() / (one | sheet).sum()).item()
    net.train()
    return (
        f"loss {loss / len(scenes.kept):.4f}, overlap {shared / max(1, count):.4f} of {count},"
        f" something on {false} of {empty} empty ones"
    )


def learn(net, scenes, minutes, most):
    best = torch.optim.AdamW(net.parameters(), lr=most, weight_decay=0.01)
    begin, told, batches, recent = time.time(), time.time(), 0, 0.7
    while True:
        random.shuffle(scenes.used)
        for start in range(0, len(scenes.used) - BATCH, BATCH):
            gone = (time.time() - begin) / (60 * minutes)
            if gone >= 1:
                return
            for group in best.param_groups:
                group["lr"] = most * min(1, batches / 100 + 0.05) * (0.5 + 0.5 * math.cos(math.pi * gone))
            look, wanted = varied(*scenes.batch(scenes.used[start : start + BATCH]))
            seen = light_normalised(look).contiguous(memory_format=torch.channels_last)
            loss = loss_of(net(seen), wanted)
            best.zero_grad()
            loss.backward()
            best.step()
            batches += 1
            recent += 0.01 * (loss.item() - recent)
            if time.time() - told > 60:
                told = time.time()
                print(f"{batches} batches, loss {recent:.4f}; kept aside: {judge(net, scenes)}", flush=True)


def write(net, path, namespace="sheetweights", program="learn_map.py"):
    """Whole numbers of 8 bits, each output's with a factor of its own."""
    with open(path, "w", encoding="ascii") as file:
        file.write("#pragma once\n\n#include <array>\n#include <cstdint>\n\n")
        file.write(f"namespace mirvak::{namespace} {{\n\n")
        file.write(f"// Learnt by {program} in benchmarks/outline, which says how. Not to be changed by hand.\n")
        file.write("// Of each layer the 3 x 3 taps of each input for each output (output, input, row, column), then\n")
        file.write("// for each output the factor of its taps and the offset of its sum.\n// clang-format off\n")
        for name, weights, offsets in net.folded():
            factors = weights.abs().amax((1, 2, 3)).clamp(min=1e-9) / 127
            whole = torch.round(weights / factors[:, None, None, None]).int().reshape(-1).tolist()
            file.write(f"inline constexpr std::array<std::int8_t, {len(whole)}> {name}{{\n")
            for i in range(0, len(whole), 36):
                file.write("    " + ",".join(map(str, whole[i : i + 36])) + ",\n")
            file.write("};\n")
            for what, values in (("Factors", factors), ("Offsets", offsets)):
                file.write(f"inline constexpr std::array<float, {len(values)}> {name}{what}{{\n")
                rows = [f"{value:.6g}" for value in values.tolist()]
                rows = [row + ("F" if "." in row or "e" in row else ".0F") for row in rows]
                for i in range(0, len(rows), 8):
                    file.write("    " + ", ".join(rows[i : i + 8]) + ",\n")
                file.write("};\n")
        file.write("// clang-format on\n\n")
        file.write(f"}} // namespace mirvak::{namespace}\n")


def arrays_of(header):
    """The numbers of a header that this program wrote, by name."""
    text = open(header, encoding="ascii").read()
    found = re.findall(r"> (\w+){\n(.*?)};", text, re.S)
    return {name: torch.tensor([float(number) for number in re.findall(r"[-+.e0-9]+", body)]) for name, body in found}


def go_on(net, header, scenes):
    """From plain convolutions to the same ones with batch normalisation, its statistics those of some scenes."""
    numbers, spreads = arrays_of(header), {}
    for name, layer in net.layers.items():
        factors = numbers[name + "Factors"]
        layer.weight.data = numbers[name].reshape(layer.weight.shape) * factors[:, None, None, None]
        if name == net.last:
            layer.bias.data = numbers[name + "Offsets"]
            continue
        norm = net.norms[name]
        norm.bias.data, norm.running_var[:] = numbers[name + "Offsets"].clone(), 1 - norm.eps
        layer.register_forward_hook(
            lambda _, __, out, name=name: spreads.update({name: torch.var_mean(out, (0, 2, 3))})
        )
    net.eval()
    with torch.no_grad():
        net(light_normalised(scenes.batch(random.sample(scenes.used, 512))[0]))
    for name, norm in net.norms.items():
        spread, mean = spreads[name]
        norm.running_mean[:], norm.running_var[:] = mean, spread
        norm.weight.data = torch.sqrt(spread + norm.eps)
        norm.bias.data += mean
        net.layers[name]._forward_hooks.clear()
    net.train()


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    minutes, header, rest = float(sys.argv[1]), sys.argv[2], sys.argv[3:]
    torch.manual_seed(1)
    random.seed(1)
    torch.set_num_threads(1)  # more of them wait for each other on a busy machine
    net = SheetNet().to(memory_format=torch.channels_last)
    most = 4e-3
    start = ""
    if rest[0] == "--from":
        start, rest, most = rest[1], rest[2:], 1.5e-3
    print(sum(weights.numel() for _, weights, _ in net.folded()), "weights", flush=True)
    scenes = Scenes(rest)
    if start:
        go_on(net, start, scenes)
        print("before:", judge(net, scenes), flush=True)
    learn(net, scenes, minutes, most)
    print("at the end:", judge(net, scenes))
    write(net, header)


if __name__ == "__main__":
    main()
