// The command catalogue and, for the command picked, a form built from its descriptor: each
// input as its type asks, in the descriptor's order, prefilled from getHandler where the command
// has one. Execute runs executeHandler and shows the result code and the output.
import { commandPath, element, getJson, postJson } from './api.js';
import { renderOutput } from './report.js';

const CATEGORIES = [
  ['DIAGNOSTIC_COMMANDS', 'Inspections'],
  ['TOOL_COMMANDS', 'Tools'],
  ['', 'Without a category'],
];

const RESULT_MEANINGS = {
  0: 'done',
  3: 'invalid parameter',
  5: 'not implemented by this command',
  6: 'the file could not be opened',
  7: 'the file could not be read',
};

const HANDLERS = [[4, 'description'], [2, 'get'], [1, 'execute']];

export const displayName = (entry) => entry.name || entry.description || entry.id;

function resultBadge(code) {
  const meaning = RESULT_MEANINGS[code] ?? 'see the command';
  return element('span', { class: 'code', 'data-ok': String(code === 0), 'data-result': String(code) },
    `result ${code}`, element('span', { class: 'muted' }, ` · ${meaning}`));
}

const slug = (text) => text.toLowerCase().replace(/[^a-z0-9]+/g, '-').replace(/^-|-$/g, '');

// One input of the descriptor: its control, and how its value is read and written.
class Field {
  constructor(input) {
    this.input = input;
    this.id = String(input.ID ?? '');
    this.type = String(input.TYPE ?? 'STRING');
    this.readOnly = input.READONLY === true;
    this.required = input.REQUIRED === true;
    this.visible = input.VISIBILITY !== false;
    this.control = this.makeControl();
    this.set(input.DEFAULT);
  }

  makeControl() {
    const common = { id: `input-${slug(this.id)}`, name: this.id, 'data-input': this.id };
    switch (this.type) {
      case 'LIST': {
        const select = element('select', { ...common, disabled: this.readOnly });
        for (const value of this.input.VALUES ?? []) select.append(new Option(String(value), String(value)));
        return select;
      }
      case 'NUMERIC':
        return element('input', {
          ...common,
          type: 'number',
          step: '1',
          min: this.input.MINIMUM_VALUE,
          max: this.input.MAXIMUM_VALUE,
          readonly: this.readOnly,
          required: this.required && !this.readOnly,
        });
      case 'BOOL':
        return element('input', { ...common, type: 'checkbox', disabled: this.readOnly });
      case 'TEXT':
      case 'JSON':
        return element('textarea', { ...common, readonly: this.readOnly, rows: '3' });
      default:
        return element('input', { ...common, type: 'text', readonly: this.readOnly, required: this.required && !this.readOnly });
    }
  }

  set(value) {
    if (value === undefined) return;
    if (this.type === 'BOOL') {
      this.control.checked = value === true;
    } else if (this.type === 'JSON') {
      this.control.value = JSON.stringify(value, null, 2);
    } else if (this.type === 'LIST') {
      const text = String(value);
      if (![...this.control.options].some((option) => option.value === text)) {
        this.control.append(new Option(`${text} (not in the list)`, text));
      }
      this.control.value = text;
    } else {
      this.control.value = value === null ? '' : String(value);
    }
  }

  // The value as the execute document carries it; throws with a message when it cannot be read.
  value() {
    switch (this.type) {
      case 'BOOL':
        return this.control.checked;
      case 'NUMERIC': {
        const number = Number(this.control.value);
        if (this.control.value.trim() === '' || !Number.isInteger(number)) {
          throw new Error(`${this.input.NAME ?? this.id} needs a whole number`);
        }
        return number;
      }
      case 'JSON':
        try {
          return JSON.parse(this.control.value);
        } catch (error) {
          throw new Error(`${this.input.NAME ?? this.id} is not valid JSON: ${error.message}`);
        }
      default:
        return this.control.value;
    }
  }

  row() {
    const badges = element('span', { class: 'badges' },
      this.required ? element('span', { class: 'badge required', title: 'required' }, 'required') : null,
      this.readOnly ? element('span', { class: 'badge readonly', title: 'read-only' }, 'read-only') : null,
      element('span', { class: 'badge' }, this.type));
    const range = this.type === 'NUMERIC' && (this.input.MINIMUM_VALUE !== undefined || this.input.MAXIMUM_VALUE !== undefined)
      ? element('span', { class: 'range' }, `${this.input.MINIMUM_VALUE ?? '…'} – ${this.input.MAXIMUM_VALUE ?? '…'}`)
      : null;
    const help = this.input.DESCRIPTION && this.input.DESCRIPTION !== this.input.NAME
      ? element('div', { class: 'help' }, this.input.DESCRIPTION) : null;
    if (this.type === 'TEXT' && this.readOnly && !this.control.value) {
      // A read-only text with nothing in it is a line of explanation: its name says it all.
      return element('div', { class: 'input note', hidden: !this.visible, 'data-field': this.id },
        element('label', {}, this.input.NAME ?? this.id, badges), help);
    }
    return element('div', { class: 'input', hidden: !this.visible, 'data-field': this.id },
      element('label', { for: this.control.id }, this.input.NAME ?? this.id, badges),
      element('div', {}, this.control, range),
      help);
  }
}

export class Commands {
  constructor({ nav, view, count }) {
    this.nav = nav;
    this.view = view;
    this.count = count;
    this.catalogue = [];
    this.current = null;
  }

  async load() {
    this.catalogue = await getJson('/api/catalogue');
    this.count.textContent = `${this.catalogue.length} commands`;
    this.nav.replaceChildren();
    for (const [category, title] of CATEGORIES) {
      const entries = this.catalogue
        .filter((entry) => (CATEGORIES.some(([c]) => c === entry.category) ? entry.category : '') === category)
        .sort((a, b) => (a.order ?? 1e9) - (b.order ?? 1e9) || a.index - b.index);
      if (!entries.length) continue;
      this.nav.append(element('h3', {}, title), element('ul', {}, entries.map((entry) =>
        element('li', {}, element('button', {
          type: 'button',
          'data-command': entry.id,
          onclick: () => this.open(entry),
        }, displayName(entry),
        displayName(entry) !== entry.id ? element('span', { class: 'command-id' }, entry.id) : null)))));
    }
    return this.catalogue;
  }

  async open(entry) {
    this.current = entry;
    for (const button of this.nav.querySelectorAll('button')) {
      button.setAttribute('aria-current', String(button.dataset.command === entry.id));
    }
    this.view.replaceChildren(element('p', { class: 'muted' }, 'Reading the descriptor…'));
    let description;
    try {
      description = await getJson(commandPath(entry.id, 'descriptor'));
    } catch (error) {
      this.view.replaceChildren(element('p', { class: 'error' }, error.message));
      return;
    }
    if (this.current !== entry) return;
    this.render(entry, description);
  }

  render(entry, description) {
    const document = description.document ?? {};
    const inputs = Array.isArray(document.INPUTS) ? document.INPUTS : [];
    const fields = inputs.map((input) => new Field(input));
    const handlers = HANDLERS.filter(([bit]) => entry.mask & bit).map(([, name]) => name).join(', ');
    // The document Execute sends: written from the form, or as the user edits it by hand (for
    // inputs a form cannot say, such as a list of buttons).
    const preview = element('textarea', { class: 'input-document', rows: '8', spellcheck: 'false', 'aria-label': 'Input document' });
    let edited = false;
    preview.addEventListener('input', () => { edited = true; });
    const result = element('div', { class: 'result', hidden: true, 'aria-live': 'polite' });
    const status = element('span', { class: 'muted small', role: 'status' });
    const hidden = fields.filter((field) => !field.visible).length;

    const formDocument = () => Object.fromEntries(fields.map((field) => [field.id, field.value()]));
    const inputDocument = () => {
      if (!edited) return formDocument();
      try {
        return JSON.parse(preview.value);
      } catch (error) {
        throw new Error(`the input document is not valid JSON: ${error.message}`);
      }
    };
    const refreshPreview = () => {
      edited = false;
      try {
        preview.value = JSON.stringify(formDocument(), null, 2);
      } catch (error) {
        preview.value = error.message;
      }
    };

    const form = element('form', { class: 'form', novalidate: false },
      fields.length ? fields.map((field) => field.row())
        : element('p', { class: 'muted' }, 'This command takes no inputs.'),
      hidden ? element('p', { class: 'muted small' }, `${hidden} hidden input(s) are sent as they are.`) : null,
      element('div', { class: 'actions' },
        element('button', { type: 'submit', class: 'primary', id: 'execute' }, 'Execute'),
        entry.mask & 2 ? element('button', { type: 'button', id: 'read-values', onclick: () => this.readValues(entry, fields, status, refreshPreview) }, 'Read current values') : null,
        status),
      element('details', { class: 'document' }, element('summary', {}, 'Input document (edit to send it as written)'), preview));
    const fromForm = (event) => {
      if (event.target !== preview) refreshPreview();
    };
    form.addEventListener('input', fromForm);
    form.addEventListener('change', fromForm);
    form.addEventListener('submit', (event) => {
      event.preventDefault();
      this.execute(entry, fields, inputDocument, result, status);
    });

    const outputs = Array.isArray(document.OUTPUTS) && document.OUTPUTS.length
      ? element('p', { class: 'muted small' }, `Reports: ${document.OUTPUTS.map((o) => `${o.NAME ?? o.ID} (${o.TYPE})`).join(', ')}`)
      : null;
    this.view.replaceChildren(
      element('h3', {}, displayName(entry)),
      element('p', { class: 'command-meta' },
        document.DESCRIPTION ? `${document.DESCRIPTION} · ` : '',
        element('code', {}, entry.id), ` · kind ${entry.kind} · timeout ${entry.timeoutMs} ms · handlers: ${handlers}`,
        description.result !== 0 ? ` · descriptionHandler answered ${description.result}` : ''),
      ...[outputs, form, result].filter(Boolean));
    refreshPreview();
    if (entry.mask & 2) this.readValues(entry, fields, status, refreshPreview);
  }

  async readValues(entry, fields, status, refreshPreview) {
    status.textContent = 'reading the current values…';
    try {
      const answer = await postJson(commandPath(entry.id, 'get'), {});
      for (const field of fields) {
        if (answer.document && field.id in answer.document) field.set(answer.document[field.id]);
      }
      status.textContent = `current values read (getHandler result ${answer.result})`;
      status.dataset.read = String(Date.now());
      refreshPreview();
    } catch (error) {
      status.textContent = `reading failed: ${error.message}`;
    }
  }

  async execute(entry, fields, inputDocument, result, status) {
    let input;
    try {
      input = inputDocument();
    } catch (error) {
      status.textContent = error.message;
      return;
    }
    status.textContent = `running (up to ${entry.timeoutMs} ms on a TV)…`;
    try {
      const answer = await postJson(commandPath(entry.id, 'exec'), input);
      const lists = fields.filter((field) => field.type === 'LIST').map((field) => field.value());
      const fileName = slug(lists.join(' ')) || slug(entry.id);
      result.replaceChildren(
        element('div', { class: 'result-head' }, element('strong', {}, 'executeHandler'), resultBadge(answer.result)),
        renderOutput(answer.output, fileName),
        element('details', { class: 'document' }, element('summary', {}, 'Output document as the plug-in wrote it'),
          element('pre', {}, JSON.stringify(answer.output, null, 2))));
      result.hidden = false;
      status.textContent = '';
    } catch (error) {
      status.textContent = `failed: ${error.message}`;
    }
  }
}
