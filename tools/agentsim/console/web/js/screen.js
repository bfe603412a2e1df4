// The live screen: asks the console for frames at the chosen rate and paints what changed.
// A frame answer is a 4-byte little-endian length, a JSON header of that length naming the
// rectangles that follow, then each rectangle's RGBA rows.
import { formatBytes, sleep } from './api.js';

const KEYS = {
  ArrowUp: 'UP',
  ArrowDown: 'DOWN',
  ArrowLeft: 'LEFT',
  ArrowRight: 'RIGHT',
  Enter: 'ENTER',
  Backspace: 'BACK',
  Escape: 'EXIT',
};

export function remoteButtonForKey(event) {
  if (event.altKey || event.ctrlKey || event.metaKey) return null;
  if (KEYS[event.key]) return KEYS[event.key];
  if (/^[0-9]$/.test(event.key)) return `NUM${event.key}`;
  return null;
}

export function decodeFrame(buffer) {
  const view = new DataView(buffer);
  const length = view.getUint32(0, true);
  const header = JSON.parse(new TextDecoder().decode(new Uint8Array(buffer, 4, length)));
  let offset = 4 + length;
  const pieces = header.rects.map(([x, y, width, height]) => {
    const bytes = width * height * 4;
    const pixels = new Uint8ClampedArray(buffer, offset, bytes);
    offset += bytes;
    return { x, y, width, height, pixels };
  });
  return { header, pieces };
}

export class LiveScreen {
  constructor({ canvas, rateSelect, pauseButton, status, stats, onKey }) {
    this.canvas = canvas;
    this.context = canvas.getContext('2d', { alpha: false });
    this.rateSelect = rateSelect;
    this.pauseButton = pauseButton;
    this.status = status;
    this.stats = stats;
    this.seq = 0;
    this.frames = 0;
    this.bytes = 0;
    this.arrivals = [];
    this.paused = false;

    for (let rate = 1; rate <= 10; rate += 1) {
      rateSelect.append(new Option(String(rate), String(rate), rate === 5, rate === 5));
    }
    pauseButton.addEventListener('click', () => this.setPaused(!this.paused));
    canvas.addEventListener('keydown', (event) => {
      const button = remoteButtonForKey(event);
      if (button) {
        event.preventDefault();
        onKey(button);
      }
    });
    canvas.addEventListener('pointerdown', () => canvas.focus());
  }

  get rate() {
    return Number(this.rateSelect.value);
  }

  setPaused(paused) {
    this.paused = paused;
    this.pauseButton.textContent = paused ? 'Resume' : 'Pause';
    this.showStatus(paused ? 'paused' : '');
  }

  showStatus(text) {
    this.status.textContent = text;
  }

  async run() {
    for (;;) {
      if (this.paused) {
        await sleep(200);
        continue;
      }
      const started = performance.now();
      try {
        const response = await fetch(`/api/frame?have=${this.seq}&rate=${this.rate}`, {
          cache: 'no-store',
          credentials: 'same-origin',
        });
        if (!response.ok) throw new Error(`frame request answered ${response.status}`);
        this.paint(await response.arrayBuffer());
      } catch (error) {
        this.showStatus(`no frames: ${error.message}`);
        await sleep(1000);
        continue;
      }
      const wait = 1000 / this.rate - (performance.now() - started);
      if (wait > 0) await sleep(wait);
    }
  }

  paint(buffer) {
    const { header, pieces } = decodeFrame(buffer);
    this.bytes += buffer.byteLength;
    if (header.seq !== this.seq && header.width > 0) {
      if (this.canvas.width !== header.width || this.canvas.height !== header.height) {
        this.canvas.width = header.width;
        this.canvas.height = header.height;
      }
      for (const piece of pieces) {
        const image = new ImageData(piece.pixels, piece.width, piece.height);
        this.context.putImageData(image, piece.x, piece.y);
      }
      this.seq = header.seq;
      this.frames += 1;
      this.arrivals.push(performance.now());
      this.canvas.dataset.frames = String(this.frames);
      this.showStatus('');
    } else if (header.frames === 0) {
      this.showStatus(`waiting for the first frame… (${header.misses} missed)`);
    }
    this.updateStats(header);
  }

  // Frames per second over the last three seconds, falling when frames stop coming.
  achievedRate() {
    const now = performance.now();
    while (this.arrivals.length && now - this.arrivals[0] > 3000) this.arrivals.shift();
    if (this.arrivals.length < 2) return 0;
    return (this.arrivals.length - 1) / ((now - this.arrivals[0]) / 1000);
  }

  updateStats(header) {
    this.stats.frames.textContent = String(this.frames);
    this.stats.fps.textContent = this.achievedRate().toFixed(1);
    this.stats.misses.textContent = String(header.misses);
    this.stats.fills.textContent = String(header.fills);
    this.stats.size.textContent = `${this.canvas.width} × ${this.canvas.height}`;
    this.stats.bytes.textContent = formatBytes(this.bytes);
  }
}
